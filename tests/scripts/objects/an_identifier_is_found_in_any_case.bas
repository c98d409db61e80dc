a = createobject("Brindle.FileSystem")
b = createobject("BRINDLE.filesystem")
print a.IsFolder(".") ; b.isfolder(".")  # expect: TrueTrue
