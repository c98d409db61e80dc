closedialog
# expect error 43 anywhere: No active dialogs open
print "on"
# expect: on
