alter 10
# expect error 43: No active dialogs open
  title "never"
endalter
print "on"
# expect: on
