dialog "Cancel", 0, 0, 100, 60
  control cancelbutton "Cancel", 2, 5, 5, 50, 14, "leaving"
  onexit closed
enddialog
# input: cancel
end
sub leaving(v)
  print "leaving"
  closedialog
endsub
sub closed(r)
  print "closed "; r
endsub
# expect: leaving
# expect: closed 1
