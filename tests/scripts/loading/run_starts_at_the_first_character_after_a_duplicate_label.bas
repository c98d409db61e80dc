print "first"       # expect: first
goto a
a:
print "second"      # expect: second
end
a:                  # expect error 6: Lable table full
