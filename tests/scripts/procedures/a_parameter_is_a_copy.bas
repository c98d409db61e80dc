x = 1
call change(x)
print x      # expect: 1.000000
dim a[2]
a[0] = "kept"
call swapit(a)
print a[0]   # expect: kept
end
sub change(p)
  p = 2
endsub
sub swapit(p)
  p[0] = "changed"
endsub
