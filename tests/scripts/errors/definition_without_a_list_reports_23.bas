call work()
print "on"          # expect: on
end
sub work            # expect error 23: Incorrect function definition
  print "never"
endsub
