open "f.txt" for output as #1
# problem: missing-expression@28
