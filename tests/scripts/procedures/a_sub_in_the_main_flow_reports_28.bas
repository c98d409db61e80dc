# answer: cancel
sub s()   # expect error 28: Function declaration found in main program code
  print "not reached"
endsub
