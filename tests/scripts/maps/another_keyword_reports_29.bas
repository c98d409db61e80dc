map create "m"
call mapset("m", "k", 1)
map remove "m"  # expect error 29: Invalid keyword 
map title "m"   # expect error 29: Invalid keyword 
print maphas("m", "k")  # expect: True
