for i = 1 to 2 step 2  # expect error 3: No expression present
# expect error 3: No expression present
next
