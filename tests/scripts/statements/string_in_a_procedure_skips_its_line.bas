goto main
sub work()
  "text" print "skipped"  # expect error 18: Unexpected operator
  print "body"      # expect: body
endsub
main:
call work()
print "on"          # expect: on
