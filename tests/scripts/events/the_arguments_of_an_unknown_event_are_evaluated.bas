throw nothing(told())
# expect: told
print "behind"  # expect: behind
end
function told()
  print "told"
  told = 1
endfunction
