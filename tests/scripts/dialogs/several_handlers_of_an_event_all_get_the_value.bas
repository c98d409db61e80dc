event create pressed one
event create pressed two
dialog "Event", 0, 0, 120, 90
  control checkbox "a", 10, 5, 5, 80, 14, "pressed"
enddialog
# input: click 10
# input: ok
end
sub one(v)
  print "one "; v
endsub
sub two(v)
  print "two "; v
endsub
# expect: one 1
# expect: two 1
