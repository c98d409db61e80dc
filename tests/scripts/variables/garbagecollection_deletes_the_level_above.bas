x = work(1)
print garbagecollection()   # expect: 3
print garbagecollection()   # expect: 0
s = getvarstats()
print s[0]                  # expect: 1
print x                     # expect: 1.000000
end
function work(p)
  t = p
  work = t
endfunction
