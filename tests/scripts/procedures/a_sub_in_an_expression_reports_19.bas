x = quiet()
print "on"
end
sub quiet()
  y = 1
endsub   # expect error 19: Return value of the function is not defined
