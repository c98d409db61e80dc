goto main
function down(n)
  if n > 1 then
    down = down(n - 1) + 1
  else
    down = 1
  endif
endfunction
main:
print down(2000)    # expect: 2000.000000
