# options: --ui=console --on-error=ask
dialog "D", 0, 0, 200, 200
  onexit closed
enddialog
# input: click 1
dialog "D", 0, 0, 200, 200
  onexit closed
enddialog
# input: click 2
end
sub closed(r)
  print "closed "; r
endsub
# expect: closed 1
# expect: closed 2
