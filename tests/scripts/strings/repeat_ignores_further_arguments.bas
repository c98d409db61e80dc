print repeat("ab", 2, "extra", 5)   # expect: abab
