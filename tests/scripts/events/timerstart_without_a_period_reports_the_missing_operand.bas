timerstart
# expect error 0 anywhere: Error loading resource string.
timerstop
print "behind"  # expect: behind
