goto main
sub text()
  print "a"         # expect: a
endsub
main:
call text()
