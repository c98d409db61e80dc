print other()       # expect: 1.000000
end
	  function other()
  other = 1
endfunction
