dialog "First", 0, 0, 120, 90
  control edittext "kept", 10, 5, 5, 80, 14
  onexit closed
enddialog
# input: ok
# input: cancel
print "after"
end
sub closed(r)
  print controlvalue(10)
  dialog "Next", 0, 0, 120, 90
    control edittext "other", 10, 5, 5, 80, 14
    onexit nextclosed
  enddialog
endsub
sub nextclosed(r)
  print controlvalue(10); " "; r
endsub
# expect: kept
# expect: other 2
# expect: after
