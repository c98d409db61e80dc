x = work()
call garbagecollection()
print "["; work__#2; "]"   # expect: []
end
function work()
  work = 1
endfunction
