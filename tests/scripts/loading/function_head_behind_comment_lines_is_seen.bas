print other()       # expect: 1.000000
end
rem a remark
# a comment
function other()    # and another
  other = 1
endfunction
