declare function f lib "nowhere" () # no result
declare function g lib "nowhere" (byval a as integer) as integer # a number
declare function h lib "nowhere" () as integer: print "same line"  # expect: same line
declare function i lib "nowhere" () print "and here"  # expect: and here
if 1 = 1 then declare function j lib "nowhere" () endif
event create e f
event create e g
event create e h
event create e i
event create e j
print "known"  # expect: known
