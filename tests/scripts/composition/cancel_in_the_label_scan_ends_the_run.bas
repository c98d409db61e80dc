# answer: cancel
# expect error 6 at "\na:": Lable table full
print "never"
end
a:
a:
