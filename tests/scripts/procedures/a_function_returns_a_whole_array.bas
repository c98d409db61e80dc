r = pair(1, "two")
print ubound("r")       # expect: 2
print r[0]; " "; r[1]   # expect: 1.000000 two
end
function pair(a, b)
  dim pair[2]
  pair[0] = a
  pair[1] = b
endfunction
