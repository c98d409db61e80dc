dialog "List", 0, 0, 120, 90
  control multilistbox "", 10, 5, 5, 80, 40
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  alter 10
    value "a"
    value "b"
    value "c"
  endalter
  dim many[2]
  many[0] = 2
  many[1] = 0
  alter 10
    selection many
  endalter
  chosen = controlvalue(10)
  print ubound("chosen"); chosen[0]; chosen[1]
  alter 10
    selection -1
  endalter
  print "["; controlvalue(10); "]"
  alter 10
    text "b"
  endalter
  print controlvalue(10); controlvalue(10, "selection")
endsub
# expect: 2ac
# expect: []
# expect: b1
