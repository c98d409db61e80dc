print .5            # expect:
# expect error 2: Unbalanced parens
# expect error 18: Unexpected operator
