library "lib.bas"
print answer()      # expect: 42.000000
end
