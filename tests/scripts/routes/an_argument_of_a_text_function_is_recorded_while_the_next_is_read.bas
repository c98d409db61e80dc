for r = 1 to 3
  print mid("abc", names(), 1); max(1, names())
next
# expect: b1.000000
# expect: b1.000000
# expect: b1.000000
end
function names()
  stats = getvarstats()
  names = stats[1]
endfunction
