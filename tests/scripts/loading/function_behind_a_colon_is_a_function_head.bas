print other()       # expect: 1.000000
end
rest = 1 : function other()
  other = 1
endfunction
