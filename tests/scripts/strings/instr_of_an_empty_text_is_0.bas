print instr("abc", "")   # expect: 0
print instr("", "")      # expect: 0
