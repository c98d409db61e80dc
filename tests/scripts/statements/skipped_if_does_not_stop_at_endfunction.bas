if 1 = 2 then
  print "skipped"
endfunction
  print "skipped"
endif
print "on"          # expect: on
