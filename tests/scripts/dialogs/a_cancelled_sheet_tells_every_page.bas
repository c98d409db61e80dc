propertysheet "Sheet", 0, 0, 200, 100
  page "One"
    onexit one
  endpage
  page "Two"
    onexit two
  endpage
enddialog
# input: cancel
end
sub one(r)
  print "one "; r
endsub
sub two(r)
  print "two "; r
endsub
# expect: one 2
# expect: two 2
