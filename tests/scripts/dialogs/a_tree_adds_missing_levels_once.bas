dialog "Tree", 0, 0, 160, 90
  control treeview "", 10, 5, 5, 100, 60, "chosen"
  oninit opened
enddialog
# input: select 10 3
# input: select 10 1
# input: ok
end
sub opened(r)
  alter 10
    value "a\b"
    value "a\c"
    value "a\b"
    value "a"
    value "b"
  endalter
endsub
sub chosen(v)
  print v; " "; controlvalue(10, "selection")
endsub
# expect: b 3
# expect: a\b 1
