for r = 1 to 3
  a = mid("abc", names(), 1)
  b = max(1, names() + names())
  print a; b
next
# expect: b2.000000
# expect: b2.000000
# expect: b2.000000
end
function names()
  stats = getvarstats()
  names = stats[1]
endfunction
