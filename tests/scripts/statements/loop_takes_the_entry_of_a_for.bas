# "loop" jumps to whatever is on top, here once into the body of the "for".
for i = 1 to 3
  print "body"
# expect: body
# expect: body
loop
print "on"          # expect: on
