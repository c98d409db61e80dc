if 1 = 1 then


  print "a"         # expect: a


else

  print "b"

endif



print "on"          # expect: on
