dialog "Ids", 0, 0, 120, 90
  oninit opened
enddialog
# input: ok
print "after"
end
sub opened(r)
  x = controlvalue(10)
# expect error 44 anywhere: Incorrect control ID
  print "on"
endsub
# expect: on
# expect: after
