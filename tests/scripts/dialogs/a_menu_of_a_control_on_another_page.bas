propertysheet "Sheet"
  page "One"
    control edittext "a", 10, 5, 5, 50, 10
  endpage
  page "Two"
    control edittext "b", 20, 5, 5, 50, 10
    oninit fill
  endpage
enddialog
# input: menu 20 0
# input: menu window 0
# input: ok
end
sub fill(r)
  alter 20
    menuitem "Entry", "chosen"
  endalter
  alter window
    menuitem "Sheet entry", "chosen"
  endalter
endsub
sub chosen(v)
  print v
endsub
# expect: Entry
# expect: Sheet entry
