call w()
print ubound("o__#2")   # expect: 3
end
sub w()
  dim o[3]
endsub
