# The statement reports in its later rounds; its call is still made once a round.
goto main
function count()
  Calls = Calls + 1
  count = 1
endfunction
main:
global Calls
Calls = 0
x = 1
for i = 1 to 3
  y = x + count()   # expect error 18: Unexpected operator
  # expect error 18: Unexpected operator
  if i = 1 then x = Nothing endif
next
print Calls         # expect: 3.000000
