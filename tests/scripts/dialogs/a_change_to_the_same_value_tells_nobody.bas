# options: --ui=console --on-error=ask
dialog "D", 0, 0, 200, 200
  control edittext "e", 10, 5, 5, 50, 10, "told"
  control listbox "", 11, 5, 5, 50, 10, "told"
  control sliderhorz "", 12, 5, 5, 50, 10, "told"
  oninit opened
enddialog
# input: type 10 e
# input: select 11 0
# input: set 12 0
# input: ok
print "closed"
end
sub opened(r)
  alter 11
    value "a"
    selection 0
  endalter
endsub
sub told(v)
  print "never"
endsub
# expect: closed
