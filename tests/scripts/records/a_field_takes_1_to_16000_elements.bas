type Wide
  one[1] as integer
  most[16000] as char
  last as integer
endtype
dim w as Wide
w.most[15999] = 5
w.last = 6
print w.most[15999]; w.one[0]; w.last  # expect: 506
w.most[16000] = 5  # expect error 36: Array index is out of bounds
