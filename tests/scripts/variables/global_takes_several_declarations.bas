global A[2], B, C as integer
A[1] = "a"
B = "b"
C = "c"
print A[1]; B; C   # expect: abc
print reveal()     # expect: 2
end
function reveal()
  reveal = ubound("A")
endfunction
