dialog "Check", 0, 0, 120, 60
  control checkbox "Paid", 10, 5, 5, 50, 14, "clicked"
enddialog
# input: click 10
# input: click 10
# input: click 10
# input: ok
end
sub clicked(v)
  print "state "; v; " "; controlvalue(10)
endsub
# expect: state 1 1
# expect: state 0 0
# expect: state 1 1
