n = 0
for r = 1 to 3
  if 5 ~~ five() then
    n = n + 1
  endif
  if r ~~ five() then
    n = n + 100
  endif
  if 1 ~~ five() then
    n = n + 1000
  endif
next
print n   # expect: 3.000000
end
function five()
  five = 5
endfunction
