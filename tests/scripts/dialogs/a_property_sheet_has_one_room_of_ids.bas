propertysheet "Sheet", 0, 0, 200, 120
  page "First"
    control edittext "one", 10, 5, 5, 80, 14
    oninit firstopened
    onexit firstclosed
  endpage
  page "Second"
    control edittext "two", 20, 5, 5, 80, 14
    control checkbox "Copy", 21, 5, 25, 80, 14, "copy"
    oninit secondopened
    onexit secondclosed
  endpage
enddialog
# input: type 10 new
# input: click 21
# input: ok
print "after"
end
sub firstopened(r)
  print "first "; r; " "; controlvalue(20)
endsub
sub secondopened(r)
  print "second "; r; " "; controlvalue(10)
endsub
sub copy(v)
  alter 20
    text controlvalue(10)
  endalter
  print "copied "; v; " "; controlvalue(20)
endsub
sub firstclosed(r)
  print "first closed "; r
endsub
sub secondclosed(r)
  print "second closed "; r
endsub
# expect: first 0 two
# expect: second 0 one
# expect: copied 1 new
# expect: first closed 1
# expect: second closed 1
# expect: after
