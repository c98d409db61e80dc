print len("abc")
end
function Len(s)   # expect error 27: Duplicate function definition
  len = 99
endfunction
