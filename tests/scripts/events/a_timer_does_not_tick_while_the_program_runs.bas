event create ontimer h
timerstart 1
n = 0
for i = 1 to 50000
  n = n + 1
next
timerstop
print int(n)  # expect: 50000
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
