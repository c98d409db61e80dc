print "child"
end
print "never"
