if nofunction() = 1 then  # expect error 21: Undefined function name
# expect error 0: Error loading resource string.
# expect error 9: Expected: THEN
# expect error 18: Unexpected operator
endif
