if "a"="a"then print "yes"endif  # expect: yes
