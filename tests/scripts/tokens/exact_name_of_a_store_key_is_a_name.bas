# A name is looked up as written first, and this one is the key of the main program's variable.
goto main
sub work()
  print x__#1       # expect: 5.000000
endsub
main:
x = 5
call work()
