call make_it()
print "["; other__#1; "]"   # expect: []
print other__#1__#2         # expect: 7.000000
end
sub make_it()
  other__#1 = 7
endsub
