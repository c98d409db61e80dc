goto main
function work()
  x = 5
endfunction         # expect error 19: Return value of the function is not defined
main:
x = work()
print x             # expect:
x = 7
print x             # expect: 7.000000
