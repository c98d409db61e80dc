print find(3)   # expect: 3.000000
for i = 1 to 2
  x = find(1)
next
print i         # expect: 3.000000
print "done"    # expect: done
next            # expect error 55: Illegal NEXT statement.
end
function find(n)
  for i = 1 to 5
    do while 1 = 1
      for k = 1 to 5
        if k = n then
          find = k
          return
        endif
      next
    loop
  next
endfunction
