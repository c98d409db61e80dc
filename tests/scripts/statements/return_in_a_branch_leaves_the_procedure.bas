goto main
function sign(n)
  sign = 1
  if n < 0 then
    sign = -1
    return
  endif
endfunction
main:
print sign(-5)      # expect: -1.000000
print sign(5)       # expect: 1.000000
