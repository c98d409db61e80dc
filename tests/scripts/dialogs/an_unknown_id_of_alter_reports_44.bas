dialog "Ids", 0, 0, 120, 90
  control button "a", 10, 5, 5, 80, 14
  oninit opened
enddialog
# input: ok
print "after"
end
sub opened(r)
  alter 11
# expect error 44: Incorrect control ID
    title "never"
  endalter
  print "still here"
endsub
# expect: still here
# expect: after
