dim r as Place  # problem: unknown-type@10
print r.x
