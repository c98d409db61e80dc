dialog "Ids", 0, 0, 120, 60
  control okbutton "Fine", 70, 5, 5, 50, 14, "fine"
  control cancelbutton "Leave", 71, 60, 5, 50, 14, "leave"
  oninit opened
  onexit closed
enddialog
# input: click 2
end
sub opened(r)
  print controlvalue(1); " "; controlvalue(2)
endsub
sub fine(v)
  print "fine"
endsub
sub leave(v)
  print "leave "; v
endsub
sub closed(result)
  print "closed "; result
endsub
# expect: Fine Leave
# expect: leave 0
# expect: closed 2
