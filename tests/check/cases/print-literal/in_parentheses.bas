print ("a" + "b")
print "a"; "b"
