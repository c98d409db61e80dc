fs = createobject("Brindle.FileSystem")
open "one.txt" for output as 1 text
call writeline(1, "12345")
close 1
print fs.Copy("one.txt", "two.txt") ; fs.Size("TWO.TXT")              # expect: True5
print fs.CreateFolder("box") ; fs.Move("two.txt", "box")              # expect: TrueTrue
print fs.Exists("box\two.txt") ; fs.Exists("two.txt")                 # expect: TrueFalse
print fs.Delete("box\two.txt") ; fs.Delete("box") ; fs.IsFolder("box")  # expect: TrueTrueFalse
