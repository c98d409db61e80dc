open "f.txt" for output as 257  # problem: open-number@25
