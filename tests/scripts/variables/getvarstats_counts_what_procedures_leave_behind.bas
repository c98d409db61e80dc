s = work(1)
s = getvarstats()
print s[0]   # expect: 4
end
function work(p)
  t = p
  work = t
endfunction
