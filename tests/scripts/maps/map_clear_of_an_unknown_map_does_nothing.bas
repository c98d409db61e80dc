map clear "m"
print mapset("m", "k", 1); maphas("m", "k")  # expect: FalseFalse
