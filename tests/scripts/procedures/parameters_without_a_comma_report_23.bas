x = pair(1, 2)
print "on"
end
function pair(a b)   # expect error 23: Incorrect function definition
  pair = a
endfunction
