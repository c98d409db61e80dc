dialog "Clear", 0, 0, 100, 60
  control listbox "", 10, 5, 5, 50, 40, "chosen"
  oninit fill
enddialog
# input: select 10 1
# input: select 10 0
# input: ok
end
sub fill(r)
  alter 10
    value "a"
    value "b"
  endalter
endsub
sub chosen(v)
  print v
  alter 10
    clear
    value "again " + v
  endalter
  print "["; controlvalue(10); "]"
endsub
# expect: b
# expect: []
# expect: again b
# expect: []
