runexe "./tool.sh"
do while ubound("made") < 1
  made = findfiles("made.txt", 0)
loop
open "made.txt" for input as 1 text
print readline(1)   # expect: 0 parameters
