# expect error 6 at "\na:": Lable table full
call late()         # expect error 21: Undefined function name
end
a:
a:
sub late()
  print "late"
endsub
