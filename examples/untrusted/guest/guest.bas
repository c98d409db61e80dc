# What a stranger's script may do, and what it tries. This folder is its root.
dim values[3]
total = 0
open "\readings.txt" for input as 1 text
for i = 0 to 2
  values[i] = val(readline(1))
  total = total + values[i]
next
close 1
print format(total, "readings %.2f")

# Each of these is refused, and the script goes on behind it.
open "..\main.cpp" for input as 2 text
names = findfiles("..\*", 0)
runexe "/bin/true"
thing = createobject("Brindle.FileSystem")
port = comportopen(1)

# More than it is given.
print "counting"
for i = 1 to 1000000
  total = total + i
next
print "never printed here"
