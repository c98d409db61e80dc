propertysheet "Sheet", 0, 0, 200, 100
  page "One"
    control checkbox "a", 10, 5, 5, 50, 10, "told"
  endpage
  page "Two"
    control sliderhorz "", 20, 5, 5, 50, 10, "told"
    control edittext "", 21, 5, 20, 50, 10, "told"
  endpage
  page "Three"
    control combobox "", 30, 5, 5, 50, 10, "told"
    oninit fill
  endpage
enddialog
# input: set 20 7
# input: select 30 1
# input: click 10
# input: type 21 x
# input: ok
end
sub fill(r)
  alter 30
    value "a"
    value "b"
  endalter
endsub
sub told(v)
  print "told "; v
endsub
# expect: told 7
# expect: told b
# expect: told 1
# expect: told x
