# TOOLMENU=Controls
#
# Every kind of control on one form, and what its value is: the button "Values"
# prints them. The sliders and the progress text follow each other.

dialog "Controls", 0, 0, 330, 206
  control statictext "&Text:", 100, 8, 8, 50, 9
  control edittext "edit me", 101, 62, 6, 96, 13
  control statictext "&Number:", 102, 8, 26, 50, 9
  control editnumber "42", 103, 62, 24, 40, 13
  control statictext "&Date:", 104, 8, 44, 50, 9
  control datetime "", 105, 62, 42, 96, 13
  control statictext "Dro&p-down:", 106, 8, 62, 50, 9
  control combobox "", 107, 62, 60, 96, 60
  control checkbox "&Check box", 108, 8, 80, 70, 11
  control groupbox "Radio buttons", 109, 8, 94, 150, 40
  control radiogroup "on&e", 110, 16, 108, 60, 11
  control radiogroup "t&wo", 111, 84, 108, 60, 11
  control radiogroup "thr&ee", 112, 16, 120, 60, 11
  control statictext "&Several lines:", 113, 8, 138, 90, 9
  control editmultiline "first line", 114, 8, 148, 150, 50

  control listbox "", 120, 166, 6, 74, 46
  control multilistbox "", 121, 248, 6, 74, 46
  control treeview "", 122, 166, 58, 74, 62
  control tabcontrol "", 123, 248, 58, 74, 44
  control statictext "", 124, 256, 80, 58, 16
  control bitmap "brook.png", 125, 248, 106, 50, 16
  control slidervert "", 126, 304, 104, 18, 58, "SliderMoved"
  control sliderhorz "", 127, 166, 124, 130, 16, "SliderMoved"
  control statictext "", 128, 166, 142, 130, 9
  control button "&Values", 129, 166, 184, 46, 14, "ShowValues"
  control okbutton "OK", 1, 222, 184, 46, 14
  control cancelbutton "Cancel", 2, 276, 184, 46, 14
  oninit Fill
enddialog
end

sub Fill(r)
  alter 107
    value "apple"
    value "pear"
    value "quince"
    selection 1
  endalter
  alter 120
    value "list"
    value "of"
    value "items"
    selection 0
  endalter
  alter 121
    value "any"
    value "number"
    value "of these"
  endalter
  alter 122
    value "Europe\Italy"
    value "Europe\Norway"
    value "Asia\Japan"
  endalter
  alter 123
    value "Front"
    value "Back"
  endalter
  alter 124
    title "Text on a tab"
  endalter
  alter 105
    value "2026-05-04 09:30:00"
  endalter
  alter 110
    value 1
  endalter
  alter 127
    value 30
  endalter
  call SliderMoved(30)
endsub

sub SliderMoved(place)
  shown = "Both sliders stand at " + int(place)
  alter 126
    value place
  endalter
  alter 127
    value place
  endalter
  alter 128
    title shown
  endalter
endsub

sub ShowValues(v)
  print "Text: "; controlvalue(101)
  print "Number: "; controlvalue(103)
  print "Date: "; controlvalue(105)
  print "Drop-down: "; controlvalue(107)
  print "Check box: "; controlvalue(108)
  print "Radio buttons: "; controlvalue(110); controlvalue(111); controlvalue(112)
  print "List: "; controlvalue(120)
  several = controlvalue(121)
  print "Several: ";
  for i = 0 to ubound("several") - 1
    print several[i]; " ";
  next
  print ""
  print "Tree: "; controlvalue(122)
  print "Tab: "; controlvalue(123)
  print "Sliders: "; controlvalue(126); " "; controlvalue(127)
endsub
