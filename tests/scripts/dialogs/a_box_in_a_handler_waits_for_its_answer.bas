dialog "Boxes", 0, 0, 120, 90
  control button "a", 10, 5, 5, 80, 14, "asks"
enddialog
# input: click 10
# input: yes
# input: 1
# input: file.txt
# input: ok
print "after"
end
sub asks(v)
  print ask("Sure?")
  print popupmenu("one", "two")
  print fileopendlg("", "", "")
endsub
# expect: 1
# expect: 1
# expect: file.txt
# expect: after
