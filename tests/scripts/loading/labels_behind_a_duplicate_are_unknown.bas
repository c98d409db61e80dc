# The scan stops at the duplicate and knows only what stood before it.
# expect error 6 at "\na:": Lable table full
goto later          # expect error 7: Duplicate label
end
a:
a:
later:
print "skipped"
