timerstart 1000 : timerstart 500 + 1 timerstop print "behind"
# expect: behind
