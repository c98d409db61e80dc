s = "text"
for r = 1 to 3
  call gone(r)
  t = s + half(r) + loud(r)
  # answer: cancel
  # expect error 18 anywhere: Unexpected operator
  print r
next
# expect: loud1.000000
# expect: 1.000000
# expect: loud2.000000
# expect: 2.000000
end
function half(n)
  half = n / 2
endfunction
function loud(n)
  print "loud"; n
  loud = n
endfunction
sub gone(r)
  if r = 3 then
    s__#1 = Nothing
  endif
endsub
