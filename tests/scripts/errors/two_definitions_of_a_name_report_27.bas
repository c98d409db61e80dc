# Names of procedures have no case; the first definition counts.
print f()           # expect: 1.000000
end
function F()
  f = 1
endfunction
function f()        # expect error 27: Duplicate function definition
  f = 2
endfunction
