call outer()
print garbagecollection()   # expect: 1
print b__#3                 # expect: 2.000000
print c__#12                # expect: 3.000000
end
sub outer()
  a = 1
  call inner()
  global c__#12
  c__#12 = 3
endsub
sub inner()
  b = 2
endsub
