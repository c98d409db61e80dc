x = 1
event create changed h
watch create x changed
y = x + x
print y  # expect: 2.000000
if x = 1 then
  call h(x)  # expect: h 1.000000
endif
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
