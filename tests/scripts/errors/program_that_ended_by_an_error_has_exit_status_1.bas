5                   # expect error 18: Unexpected operator
# exit: 1
