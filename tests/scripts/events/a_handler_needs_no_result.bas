event create alarm f
throw alarm("x")  # expect: f x
end
function f(v)
  print "f "; v
endfunction
