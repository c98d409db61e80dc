throw alarm(nope)  # expect error 22: Incorrect function call
