x = 1
for r = 1 to 4
  y = x + make(r) + x
  z = x
  print y; " "; z
next
# expect: 2.000000 1.000000
# expect: 2.000000 1.000000
# expect: 11.000000 10.000000
# expect: 20.000000 10.000000
end
function make(r)
  make = 0
  if r = 3 then
    global x
    x = 10
    x = x + 0
  endif
endfunction
