print -2 ^ 2  # problem: sign-before-power@7
