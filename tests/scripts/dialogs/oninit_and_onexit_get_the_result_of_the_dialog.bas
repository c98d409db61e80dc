dialog "One", 0, 0, 120, 60
  oninit opened
  onexit closed
  control okbutton "OK", 77, 5, 5, 50, 14
enddialog
# input: ok
dialog "Two", 0, 0, 120, 60
  oninit opened
  onexit closed
enddialog
# input: cancel
end
sub opened(result)
  print "opened "; result
endsub
sub closed(result)
  print "closed "; result
endsub
# expect: opened 0
# expect: closed 1
# expect: opened 0
# expect: closed 2
