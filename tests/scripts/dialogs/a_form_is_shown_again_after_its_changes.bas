# options: --ui=console --on-error=ask
# exit: 0
dialog "Before", 0, 0, 200, 200
  control edittext "old", 10, 5, 5, 50, 10
  control checkbox "Seen", 11, 5, 20, 50, 10
  control statictext "hidden at first", 12, 5, 35, 50, 10
  control button "Change", 13, 5, 50, 50, 10, "change"
  oninit opened
enddialog
# input: type 10 new
# input: click 11
# input: show
# input: click 13
# input: show
print "closed"
end
sub opened(r)
  alter 12
    show 0
  endalter
endsub
sub change(v)
  alter window
    title "After"
  endalter
  alter 12
    show 1
    text "now a very long text that sticks out of its column"
  endalter
  alter 11
    show 0
  endalter
  alter 10
    enable 0
  endalter
endsub
# expect: closed
