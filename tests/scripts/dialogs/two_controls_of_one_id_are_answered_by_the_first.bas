# options: --ui=console --on-error=ask
# exit: 0
dialog "D", 0, 0, 200, 200
  control edittext "first", 10, 5, 5, 50, 10, "told"
  control edittext "other", 10, 5, 20, 50, 10, "heard"
enddialog
# input: type 10 typed
# input: show
print "closed"
end
sub told(v)
  print "told "; v
endsub
sub heard(v)
  print "heard "; v; " "; controlvalue(10)
endsub
# expect: heard typed typed
# expect: closed
