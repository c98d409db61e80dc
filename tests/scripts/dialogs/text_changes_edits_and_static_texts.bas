dialog "Texts", 0, 0, 120, 90
  control edittext "a", 10, 5, 5, 80, 14
  control editmultiline "b", 11, 5, 20, 80, 30
  control editnumber "1", 12, 5, 55, 80, 14
  control statictext "d", 13, 5, 70, 80, 14
  oninit opened
enddialog
# input: ok
end
sub opened(r)
  alter 10
    text "new a"
  endalter
  alter 11
    text "new b"
  endalter
  alter 12
    text "77"
  endalter
  alter 13
    text "new d"
  endalter
  print controlvalue(10); ","; controlvalue(11); ","; controlvalue(12); ","; controlvalue(13)
endsub
# expect: new a,new b,77,new d
