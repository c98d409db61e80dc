twice = 3
print twice(twice)   # expect: 6.000000
print twice          # expect: 3.000000
end
function twice(x)
  twice = x * 2
endfunction
