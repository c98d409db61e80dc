x = work()
print "on"          # expect: on
end
function work(a)    # expect error 24: Incorrect number of function parameters
  work = a
endfunction
