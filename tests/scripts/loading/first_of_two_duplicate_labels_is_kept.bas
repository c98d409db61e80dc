# expect error 6 at "\na:": Lable table full
goto a
print "skipped"
a:
print "first"       # expect: first
end
a:
print "second"
