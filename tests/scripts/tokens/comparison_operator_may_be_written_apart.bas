# "<" and "=" are two tokens; the condition combines them.
if 1 < = 2 then
  print "yes"       # expect: yes
endif
