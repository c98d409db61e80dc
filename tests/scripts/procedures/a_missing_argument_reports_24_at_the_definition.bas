x = same()
print "["; x; "]"
end
function same(x)   # expect error 24: Incorrect number of function parameters
  same = x
endfunction
