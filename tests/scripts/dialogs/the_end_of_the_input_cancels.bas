dialog "Endless", 0, 0, 120, 60
  control cancelbutton "Cancel", 99, 5, 5, 50, 14, "cancelled"
  onexit closed
enddialog
print "after"
end
sub cancelled(v)
  print "cancelled "; v
endsub
sub closed(result)
  print "closed "; result
endsub
# expect: cancelled 0
# expect: closed 2
# expect: after
