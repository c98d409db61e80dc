open "f.txt" for output  # problem: open-number@1
