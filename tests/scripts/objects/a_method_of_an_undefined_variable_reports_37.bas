x = nope.Exists("a")   # expect error 37: Undefined variable
call nope.Exists("a")  # expect error 37: Undefined variable
x = nope.Property      # expect error 37: Undefined variable
nope.Property = 1      # expect error 37: Undefined variable
