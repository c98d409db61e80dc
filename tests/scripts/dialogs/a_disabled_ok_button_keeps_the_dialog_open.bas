# options: --ui=console --on-error=ask
dialog "D", 0, 0, 200, 200
  control okbutton "OK", 1, 5, 5, 50, 10, "told"
  oninit opened
  onexit closed
enddialog
# input: ok
# input: click 1
# input: cancel
end
sub opened(r)
  alter 1
    enable 0
  endalter
endsub
sub told(v)
  print "never"
endsub
sub closed(r)
  print "closed "; r
endsub
# expect: closed 2
