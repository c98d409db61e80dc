type Words
  text as integer
  print as integer
  end[2] as integer
  value as double
endtype
dim w as Words
w.text = 1
w.print = 2
w.end[1] = 3
w.value = 4
print w.text; w.print; w.end[1]; w.value  # expect: 1234.000000
