goto main
function work()
  work = 5
  _                 # expect error 18: Unexpected operator
endfunction
main:
x = work()
print x             # expect:
x = 7
print x             # expect: 7.000000
