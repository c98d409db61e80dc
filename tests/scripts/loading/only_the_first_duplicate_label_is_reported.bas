print "on"          # expect: on
end
a:
a:                  # expect error 6: Lable table full
a:
b:
b:
