gosub place         # expect error 3: No expression present
print "on"          # expect: on
end
place:
