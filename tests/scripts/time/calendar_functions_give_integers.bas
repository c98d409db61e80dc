print instr(str(year()), ".")      # expect: -1
print instr(str(month()), ".")     # expect: -1
print instr(str(day()), ".")       # expect: -1
print instr(str(hour()), ".")      # expect: -1
print instr(str(minute()), ".")    # expect: -1
print instr(str(second()), ".")    # expect: -1
print instr(str(weekday()), ".")   # expect: -1
print len(str(year()))             # expect: 4
