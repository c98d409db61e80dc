print nope + 1      # expect:
# expect error 18: Unexpected operator
