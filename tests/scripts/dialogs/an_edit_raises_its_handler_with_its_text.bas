dialog "Edit", 0, 0, 120, 60
  control edittext "before", 10, 5, 5, 80, 14, "changed"
  oninit opened
enddialog
# input: type 10 Straße 7
# input: ok
end
sub opened(r)
  print controlvalue(10)
endsub
sub changed(v)
  print v; ", "; controlvalue(10); ", "; controlvalue(10, "text")
endsub
# expect: before
# expect: Straße 7, Straße 7, Straße 7
