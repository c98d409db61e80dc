type Mixed
  Large as integer
  small as integer
endtype
dim m as Mixed
m.SMALL = 2
print m.Small; m.small  # expect: 22
m.Large = 1  # expect error 37: Undefined variable
m.large = 1  # expect error 37: Undefined variable
print m.small           # expect: 2
