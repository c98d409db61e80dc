global ticks
ticks = 0
event create OnTimer tick
dialog "Timer", 0, 0, 120, 90
  control button "a", 10, 5, 5, 80, 14, "works"
enddialog
# input: click 10
# input: ok
if ticks > 0 then
  print "ticked"
endif
end
sub works(v)
  timerstart 1
  for i = 1 to 3000000
  next
endsub
sub tick(v)
  ticks = ticks + 1
  timerstop
endsub
# expect: ticked
