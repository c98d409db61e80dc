global depth
depth = 0
call more(0)
print "after"
end
# input: click 10
# input: click 10
# input: ok
# input: ok
# input: ok
sub more(v)
  depth = depth + 1
  mine = depth
  dialog "Level", 0, 0, 120, 90
    control button "deeper", 10, 5, 5, 80, 14, "more"
  enddialog
  print int(mine)
endsub
# expect: 3
# expect: 2
# expect: 1
# expect: after
