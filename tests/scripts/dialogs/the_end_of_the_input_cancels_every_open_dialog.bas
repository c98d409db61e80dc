# options: --ui=console --on-error=ask
dialog "Outer", 0, 0, 200, 200
  control button "More", 10, 5, 5, 50, 10, "more"
  onexit closed
enddialog
# input: click 10
print ask("Again?")
end
sub more(v)
  dialog "Inner", 0, 0, 200, 200
    onexit closed
  enddialog
endsub
sub closed(r)
  print "closed "; r
endsub
# expect: closed 2
# expect: closed 2
# expect: 0
