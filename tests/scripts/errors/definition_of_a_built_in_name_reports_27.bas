print len("abc")    # expect: 3
end
function len(s)     # expect error 27: Duplicate function definition
  len = 0
endfunction
