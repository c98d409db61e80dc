call work()
print "on"          # expect: on
end
sub work
  print "never"     # expect error 23: Incorrect function definition
endsub
