x = len ("ab")      # expect error 3: No expression present
# expect error 18: Unexpected operator
