dialog "Print", 0, 0, 120, 90
  control button "a", 10, 5, 5, 50, 14, "prints"
enddialog
# input: click 10
# input: ok
end
sub prints(v)
  print "one";
  print "two"
  print
endsub
# expect: onetwo
# expect: 
