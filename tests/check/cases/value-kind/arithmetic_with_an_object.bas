a = createobject("Brindle.FileSystem")
b = a + 1  # problem: value-kind@7
