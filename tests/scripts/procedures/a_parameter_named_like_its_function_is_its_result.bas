print same(5)   # expect: 5.000000
end
function same(same)
endfunction
