function f()
  f = 1
endfunction
print "not reached"
