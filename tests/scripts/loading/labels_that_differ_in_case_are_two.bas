goto Place
place:
print "lower"
end
Place:
print "upper"       # expect: upper
