# answer: cancel
print "before"   # expect: before
function f()     # expect error 28: Function declaration found in main program code
  f = 1
endfunction
print "not reached"
