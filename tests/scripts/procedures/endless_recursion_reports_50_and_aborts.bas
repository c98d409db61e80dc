print "before"
x = endless(1)
print "not reached"
end
function endless(n)
  endless = endless(n + 1)   # expect error 50: Brindle unrecoverable error
endfunction
