fs = createobject("Brindle.FileSystem")
x = fs.Explode("a")    # expect error 34: Field name does not exists in data structure
call fs.Explode("a")   # expect error 34: Field name does not exists in data structure
fs.Explode = 1         # expect error 34: Field name does not exists in data structure
x = fs.Exists.More(1)  # expect error 34: Field name does not exists in data structure
