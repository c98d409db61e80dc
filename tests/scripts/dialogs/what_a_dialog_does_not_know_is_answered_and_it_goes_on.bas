# options: --ui=console --on-error=ask
# exit: 0
dialog "D", 0, 0, 200, 200
  control edittext "e", 10, 5, 5, 50, 10, "told"
  control editnumber "1", 11, 5, 5, 50, 10, "told"
  control button "b", 12, 5, 5, 50, 10, "told"
  control listbox "", 13, 5, 5, 50, 10, "told"
  control sliderhorz "", 14, 5, 5, 50, 10, "told"
  control datetime "", 15, 5, 5, 50, 10, "told"
  control statictext "s", 16, 5, 5, 50, 10, "told"
  control button "disabled", 17, 5, 5, 50, 10, "told"
  control button "hidden", 18, 5, 5, 50, 10, "told"
  oninit opened
enddialog
# input: dance
# input: dance 10
# input: click
# input: click 99
# input: click -1
# input: click 99999999999999999999
# input: click ten
# input: click 10
# input: click 16
# input: click 17
# input: click 18
# input: type 12 text
# input: type 11 1a
# input: type 11 -1
# input: select 13 1
# input: select 13 -1
# input: select 13
# input: select 10 0
# input: set 14 101
# input: set 14 -1
# input: set 14 half
# input: set 14
# input: set 15 2023-02-29 00:00:00
# input: set 15 today
# input: set 10 5
# input: menu 10 0
# input: menu window 0
# input: menu 99 0
# input:
# input: CLICK 12
print "closed"
end
sub opened(r)
  alter 13
    value "only"
  endalter
  alter 15
    value "2024-01-01 00:00:00"
  endalter
  alter 17
    enable 0
  endalter
  alter 18
    show 0
  endalter
endsub
sub told(v)
  print "told "; v
endsub
# expect: told 0
# expect: closed
