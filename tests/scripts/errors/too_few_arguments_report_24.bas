call work(1)
print "on"          # expect: on
end
sub work(a, b)      # expect error 24: Incorrect number of function parameters
  print "never"
endsub
