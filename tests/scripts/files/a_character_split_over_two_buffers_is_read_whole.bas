wrong = 0
open "data" as 1 text
for n = 0 to 11
  s = readline(1)
  if s <> repeat("ä€😀", 300) then
    wrong = wrong + 1
  endif
  s = readline(1)
  if len(s) <> n then
    wrong = wrong + 1
  endif
next
print wrong   # expect: 0.000000
