print isnan(0)                    # expect: 0
print isnan(1 / 0)                # expect: 0
print isnan("nan")                # expect: 0
if isnan(sqr(-1)) <> 0 then
  print "yes"                     # expect: yes
endif
x = 0 / 0
if isnan(x) <> 0 then
  print "yes"                     # expect: yes
endif
print instr(str(isnan(x)), ".")   # expect: -1
