if 1 = 1 = 1 then   # expect error 9: Expected: THEN
# expect error 18: Unexpected operator
endif
