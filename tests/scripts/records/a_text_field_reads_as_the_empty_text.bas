type Named
  name as string
  id as integer
endtype
dim r as Named
r.id = 7
r.name = "Anna"
print "["; r.name; "] "; len(r.name); " "; r.id  # expect: [] 0 7
