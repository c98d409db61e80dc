open "data" as 1 text
print len(readline(1)); " "; len(readline(1)); " "; len(readline(1))   # expect: 255 256 5000
