x = 7 mod 2  # problem: logical-word@7
