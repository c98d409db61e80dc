goto main
sub work()
  # answer: cancel
  next              # expect error 55: Illegal NEXT statement.
  print "never"
endsub
main:
call work()
print "never"
