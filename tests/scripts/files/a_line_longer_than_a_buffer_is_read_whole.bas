open "data" as 1 text
for n = 1 to 6
  s = readline(1)
  print int(len(s)); " "; right(s, 1);
  print ",";
next
print   # expect: 254 z,255 z,256 z,257 z,1000 z,70000 z,
