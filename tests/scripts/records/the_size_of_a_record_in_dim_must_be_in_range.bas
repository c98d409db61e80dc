type Point
  x as integer
  y as double
endtype
dim p[16000] as Point
p.x = 2
print p.x  # expect: 2
dim q[16001] as Point  # expect error 32: Incorrect array size
# expect error 18: Unexpected operator
print "the words behind the size end the run"
