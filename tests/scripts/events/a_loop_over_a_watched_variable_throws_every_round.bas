i = 0
event create changed display
watch create i changed
for i = 1 to 2
  print "round"
next
# expect: 1
# expect: round
# expect: 2
# expect: round
# expect: 3
end
sub display(v)
  print int(v)
endsub
