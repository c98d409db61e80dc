# options: --ui=console --on-error=ask
# exit: 0
dialog "Site visit", 0, 0, 200, 200
  control statictext "Inspector:", 10, 5, 5, 50, 10
  control edittext "Miller", 11, 60, 5, 80, 14
  control editmultiline "", 12, 5, 20, 80, 30
  control editnumber "42", 13, 5, 55, 80, 14
  control datetime "Date", 14, 5, 70, 80, 14
  control checkbox "Paid", 15, 5, 85, 80, 14
  control checkbox "Größe geprüft", 16, 5, 85, 80, 14
  control groupbox "Size", 20, 5, 100, 80, 50
  control radiogroup "small", 21, 5, 110, 80, 14
  control radiogroup "large", 22, 5, 125, 80, 14
  control listbox "Site", 30, 100, 5, 80, 40
  control multilistbox "Crops", 31, 100, 50, 80, 40
  control combobox "Weather", 32, 100, 95, 80, 40
  control treeview "Place", 33, 100, 110, 80, 40
  control tabcontrol "Pages", 34, 100, 150, 80, 40
  control sliderhorz "Depth", 40, 5, 150, 80, 14
  control slidervert "Height", 41, 5, 165, 80, 14
  control bitmap "logo.bmp", 50, 5, 180, 20, 20
  control button "Locate", 1234, 30, 180, 50, 14
  control okbutton "OK", 1, 85, 180, 50, 14
  control cancelbutton "Cancel", 2, 140, 180, 50, 14
  oninit opened
enddialog
print "closed"
end
sub opened(r)
  alter 12
    text "first line
second line"
  endalter
  alter 14
    value "2024-02-29 08:30:00"
  endalter
  alter 15
    value 1
  endalter
  alter 22
    value 1
  endalter
  alter 30
    value "Harbour"
    value "Mill"
    selection 1
  endalter
  alter 31
    value "oats"
    value "rye"
    value "wheat"
    selection 2
  endalter
  alter 33
    value "north\field"
  endalter
  alter 34
    value "general"
    value "details"
  endalter
  alter 40
    value 75
  endalter
  alter 1234
    enable 0
    menuitem "By satellite", "nothing"
    menuitem "By hand", "nothing"
  endalter
  alter window
    menuitem "About", "nothing"
  endalter
  setfocus 11
endsub
# expect: closed
