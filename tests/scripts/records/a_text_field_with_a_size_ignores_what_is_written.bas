type Named
  name[10] as string
  id as integer
endtype
dim r as Named
r.id = 7
r.name = "Anna"
r.name[9] = "Berta"
print "["; r.name; r.name[3]; "] "; r.id  # expect: [] 7
r.name[10] = "Clara"  # expect error 36: Array index is out of bounds
