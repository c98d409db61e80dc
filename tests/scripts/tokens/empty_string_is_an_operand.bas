x = ""
print x; "."        # expect: .
print ("" + "a")    # expect: a
