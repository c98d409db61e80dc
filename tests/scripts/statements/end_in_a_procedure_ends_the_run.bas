goto main
sub work()
  print "a"         # expect: a
  end
  print "b"
endsub
main:
call work()
print "c"
