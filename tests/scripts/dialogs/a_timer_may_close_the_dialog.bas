event create OnTimer tick
dialog "Timer", 0, 0, 120, 90
  control button "a", 10, 5, 5, 80, 14, "works"
  onexit closed
enddialog
# input: click 10
print ask("The next line is still there?")
# input: yes
end
sub works(v)
  timerstart 1
  for i = 1 to 3000000
  next
endsub
sub tick(v)
  timerstop
  closedialog
endsub
sub closed(r)
  print "closed "; r
endsub
# expect: closed 1
# expect: 1
