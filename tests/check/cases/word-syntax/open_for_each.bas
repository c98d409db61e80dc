open "f.txt" for each as 1  # problem: word-syntax@18
