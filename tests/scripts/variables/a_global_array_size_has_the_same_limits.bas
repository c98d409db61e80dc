global G[16000]
print ubound("G")   # expect: 16000
global H[16001]     # expect error 32: Incorrect array size
global K[0]         # expect error 32: Incorrect array size
