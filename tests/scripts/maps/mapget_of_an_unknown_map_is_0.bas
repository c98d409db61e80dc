print mapget("nope", "k")  # expect: 0.000000
