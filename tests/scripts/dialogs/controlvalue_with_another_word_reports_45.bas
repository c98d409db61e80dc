dialog "Word", 0, 0, 100, 60
  control edittext "edit", 11, 5, 20, 50, 10
  oninit opened
enddialog
# input: ok
print "after"
end
sub opened(r)
  x = controlvalue(11, "colour")
# expect error 45 anywhere: Incorrect parameter
  print "on"
endsub
# expect: on
# expect: after
