o = createobject("No.Such.Class")
print "[" ; o ; "]"
print "[" ; o.Property ; "]"
# exit: 1
