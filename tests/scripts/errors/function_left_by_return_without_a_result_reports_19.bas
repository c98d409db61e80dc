goto main
function work()
  return            # expect error 19: Return value of the function is not defined
endfunction
main:
x = work()
print "on"          # expect: on
