dialog "Change", 0, 0, 100, 60
  control checkbox "a", 10, 5, 5, 50, 14, "undo"
  control edittext "", 11, 5, 20, 50, 14, "upper"
enddialog
# input: click 10
# input: type 11 x
# input: ok
end
sub undo(v)
  alter 10
    value 0
    title "undone"
  endalter
  print v; controlvalue(10); controlvalue(10, "text")
endsub
sub upper(v)
  alter 11
    text ucase(v)
  endalter
  print v; controlvalue(11)
endsub
# expect: 10undone
# expect: xX
