fs = createobject("Brindle.FileSystem")
x = "before"
x = fs.Delete("nope")
call fs.Delete("nope")
x = fs.Exists("a", "b")
print "[" ; x ; "] on"
# exit: 1
