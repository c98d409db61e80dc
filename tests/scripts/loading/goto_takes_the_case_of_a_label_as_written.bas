goto PLACE          # expect error 7: Duplicate label
end
place:
print "skipped"
