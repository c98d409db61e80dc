# answer: cancel
call outer()
print "not reached"
end
sub outer()
  sub inner()   # expect error 28: Function declaration found in main program code
  endsub
endsub
