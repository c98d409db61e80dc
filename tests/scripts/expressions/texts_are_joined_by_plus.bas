print ("ab" + "cd")  # expect: abcd
s = "ab"
print s + "cd" + "ef"  # expect: abcdef
