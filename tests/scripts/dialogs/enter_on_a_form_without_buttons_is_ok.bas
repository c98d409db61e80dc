dialog "Bare", 0, 0, 120, 90
  control edittext "a", 10, 5, 5, 50, 14
  onexit closed
enddialog
# input: ok
end
sub closed(r)
  print r; controlvalue(10)
endsub
# expect: 1a
