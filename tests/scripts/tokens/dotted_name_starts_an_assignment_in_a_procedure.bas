goto main
sub work()
  a.b = 5           # expect error 37: Undefined variable
  print "on"        # expect: on
endsub
main:
call work()
