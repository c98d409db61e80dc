a = "x"
print a$  # problem: stray-text@8
