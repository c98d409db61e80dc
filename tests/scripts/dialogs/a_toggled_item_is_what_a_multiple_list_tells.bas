dialog "List", 0, 0, 120, 90
  control multilistbox "", 10, 5, 5, 80, 40, "toggled"
  oninit opened
enddialog
# input: select 10 2
# input: select 10 0
# input: select 10 2
# input: select 10 0
# input: ok
end
sub opened(r)
  alter 10
    value "a"
    value "b"
    value "c"
  endalter
endsub
sub toggled(v)
  print v; " of "; ubound("places"); controlvalue(10)
endsub
# expect: c of 0c
# expect: a of 0a
# expect: c of 0a
# expect: a of 0
