x = popupmenu() # expect error 24 anywhere: Incorrect number of function parameters
print "on"
# expect: on
