dialog "Close", 0, 0, 120, 60
  control button "Close", 10, 5, 5, 50, 14, "leave"
  onexit closed
enddialog
# input: click 10
print "after"
end
sub leave(v)
  closedialog
  print "still in the handler"
endsub
sub closed(result)
  print "closed "; result
endsub
# expect: still in the handler
# expect: closed 1
# expect: after
