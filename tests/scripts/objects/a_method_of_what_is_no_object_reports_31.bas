n = 5
t = "text"
x = n.Exists("a")     # expect error 31: Invalid argument type
x = t.Exists("a")     # expect error 31: Invalid argument type
call n.Exists("a")    # expect error 31: Invalid argument type
x = n.Property        # expect error 31: Invalid argument type
n.Property = 1        # expect error 31: Invalid argument type
