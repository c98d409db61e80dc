h = dbfopen("nothing")
print h                  # expect: -1
h = dbfopen("no/such/folder/table.dbf")
print h                  # expect: -1
h = dbfopen("")
print h                  # expect: -1
