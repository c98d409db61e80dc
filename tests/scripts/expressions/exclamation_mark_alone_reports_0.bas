if 1 ! 2 then       # expect error 0: Error loading resource string.
# expect error 9: Expected: THEN
endif
