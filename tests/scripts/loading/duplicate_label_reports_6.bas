print "start"       # expect: start
end
a:
a:                  # expect error 6: Lable table full
