event create "alarm" "h"
throw alarm("x")       # expect: h x
event remove "ALARM" h
throw alarm("y")
event create alarm "other"
throw alarm("z")       # expect: other z
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
