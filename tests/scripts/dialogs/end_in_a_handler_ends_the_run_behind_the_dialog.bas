dialog "End", 0, 0, 120, 90
  control button "a", 10, 5, 5, 80, 14, "ends"
  onexit closed
enddialog
# input: click 10
# input: ok
print "never"
end
sub ends(v)
  print "ending"
  end
  print "never"
endsub
sub closed(r)
  print "closed "; r
endsub
# expect: ending
# expect: closed 1
