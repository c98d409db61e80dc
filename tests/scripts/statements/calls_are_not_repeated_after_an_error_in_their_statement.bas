# The statement reports in its second round; its call is still made once a round.
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
  y = x + count()
  if i = 1 then x = Nothing endif
# expect error 18 at "\n  y = x + count()": Unexpected operator
# expect error 18 at "\n  y = x + count()": Unexpected operator
next
print Calls         # expect: 3.000000
