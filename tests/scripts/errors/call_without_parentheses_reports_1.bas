goto main
sub work()
  print "never"
endsub
main:
call work           # expect error 1: Syntax error
print "on"          # expect: on
