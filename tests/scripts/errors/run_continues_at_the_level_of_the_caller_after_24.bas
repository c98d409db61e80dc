goto main
sub work(a)         # expect error 24: Incorrect number of function parameters
  print "never"
endsub
main:
x = 1
call work()
print x             # expect: 1.000000
return              # expect error 14: Incorrect location of the RETURN statement
