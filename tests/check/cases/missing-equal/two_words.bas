hello world  # problem: missing-equal@1
