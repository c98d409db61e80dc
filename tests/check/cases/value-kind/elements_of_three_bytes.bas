open "f.bin" for output as 1
x = read(1, 1, 3)  # problem: value-kind@5
