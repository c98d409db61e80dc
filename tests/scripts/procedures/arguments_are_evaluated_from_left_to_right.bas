global Trace
Trace = ""
x = three(mark("a"), mark("b"), mark("c"))
print Trace   # expect: abc
end
function mark(s)
  Trace = Trace + s
  mark = s
endfunction
function three(a, b, c)
  three = 1
endfunction
