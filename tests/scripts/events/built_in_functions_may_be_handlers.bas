map create "log"
event create record mapset
throw record("log", "k", 5)
print mapget("log", "k")  # expect: 5.000000
event create record h
throw record("log", "k")  # expect error 24: Incorrect number of function parameters
# expect: h log
end
sub h(v)
  print "h "; v
endsub
sub other(v)
  print "other "; v
endsub
