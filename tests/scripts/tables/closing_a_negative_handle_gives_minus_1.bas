print dbfclose(-5)       # expect: -1
print dbfclose(-1)       # expect: -1
print dbfclose(0)        # expect: False
print dbfclose(7)        # expect: False
