for i = 1 to 3
  dialog "Loop " + int(i), 0, 0, 100, 60
    control edittext i, 10, 5, 5, 50, 14
    onexit closed
  enddialog
next
# input: ok
# input: cancel
# input: ok
print "after"
end
sub closed(r)
  print controlvalue(10); " "; r
endsub
# expect: 1.000000 1
# expect: 2.000000 2
# expect: 3.000000 1
# expect: after
