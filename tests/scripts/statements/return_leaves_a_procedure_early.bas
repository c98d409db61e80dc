goto main
sub work()
  print "a"         # expect: a
  return
  print "b"
endsub
main:
call work()
print "on"          # expect: on
