print "a"; halt(); "b"   # expect: ab
print "not reached"
end
function halt()
  end
  print "not reached"
endfunction
