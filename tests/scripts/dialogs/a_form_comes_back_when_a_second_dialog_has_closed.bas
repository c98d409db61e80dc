# options: --ui=console --on-error=ask
# exit: 0
dialog "Outer", 0, 0, 200, 200
  control button "More", 10, 5, 5, 50, 10, "more"
  control button "Nothing", 11, 5, 5, 50, 10
enddialog
# input: click 11
# input: click 10
# input: ok
print "closed"
end
sub more(v)
  dialog "Inner", 0, 0, 200, 200
    control okbutton "OK", 1, 5, 5, 50, 10
  enddialog
endsub
# expect: closed
