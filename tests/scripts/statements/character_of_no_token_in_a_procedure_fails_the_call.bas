goto main
sub work()
  print "before"    # expect: before
  _                 # expect error 18: Unexpected operator
  print "never"
endsub
main:
call work()
print "on"          # expect: on
