fs = createobject("Brindle.FileSystem")
p = fs.Nothing
print "[" ; p ; fs.Nothing ; "]" ; len(p)  # expect: []0.000000
