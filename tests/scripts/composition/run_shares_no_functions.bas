run "child.bas"
# expect error 21 at "x = known() # in the child": Undefined function name
print known()       # expect: 1.000000
end
function known()
  known = 1
endfunction
