goto main
sub work()
  print "a"         # expect: a
inside:
  print "b"         # expect: b
endsub
main:
call work()
