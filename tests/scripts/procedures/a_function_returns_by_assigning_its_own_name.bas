print twice(4)   # expect: 8.000000
end
function twice(x)
  twice = x * 2
endfunction
