event create ALARM H
throw Alarm("x")  # expect: h x
event remove alarm h
throw alarm("y")
EVENT CREATE aLaRm "h"
THROW ALARM("z")  # expect: h z
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
