dialog "Menus", 0, 0, 160, 60
  control button "More", 10, 5, 5, 50, 14
  oninit opened
enddialog
# input: menu 10 1
# input: menu window 0
# input: menu 10 0
# input: ok
end
sub opened(r)
  alter 10
    menuitem "Copy", "chosen"
    menuitem "Paste", "other"
  endalter
  alter window
    menuitem "About", "chosen"
  endalter
endsub
sub chosen(caption)
  print "chosen "; caption
endsub
sub other(caption)
  print "other "; caption
endsub
# expect: other Paste
# expect: chosen About
# expect: chosen Copy
