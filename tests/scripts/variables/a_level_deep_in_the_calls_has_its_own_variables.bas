print down(int(1))            # expect: 12
print v__#2; v__#10; v__#12   # expect: 1911
print v__#13                  # expect: 12
end
function down(n)
  v = n
  if n < 12 then
    x = down(int(n + 1))
  endif
  down = int(v__#13)
endfunction
