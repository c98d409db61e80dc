x = pair(1, 2)
print "on"
end
function pair(a, title)   # expect error 23: Incorrect function definition
  pair = a
endfunction
