dialog "Tree", 0, 0, 160, 90
  control treeview "", 10, 5, 5, 100, 60, "chosen"
  oninit opened
enddialog
# input: select 10 1
# input: select 10 2
# input: ok
end
sub opened(r)
  alter 10
    value "\a\\b\"
    value "\\"
    value ""
    value "c"
  endalter
endsub
sub chosen(v)
  print v; " "; controlvalue(10, "selection")
endsub
# expect: a\b 1
# expect: c 2
