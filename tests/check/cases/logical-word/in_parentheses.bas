a = 5
print (a mod 2)  # problem: logical-word@10
