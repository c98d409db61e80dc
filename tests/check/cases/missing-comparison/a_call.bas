if f(1) then  # problem: missing-comparison@9
  print "y"
endif
end
function f(a)
  f = 1
endfunction
