map create "m"
for i = 0 to 999
  call mapset("m", "key" + str(int(i)), i)
next
for i = 0 to 999
  if i != 500 then
    if i != 999 then
      call mapremove("m", "key" + str(int(i)))
    endif
  endif
next
x = mapgetkeys("m")
v = mapgetvalues("m")
print ubound("x"); x[0]; x[1]  # expect: 2key500key999
print v[0]; " "; v[1]          # expect: 500.000000 999.000000
print mapget("m", "key500")    # expect: 500.000000
print maphas("m", "key499")    # expect: False
