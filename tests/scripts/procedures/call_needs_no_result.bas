call quiet()
print "on"   # expect: on
end
function quiet()
  x = 1
endfunction
