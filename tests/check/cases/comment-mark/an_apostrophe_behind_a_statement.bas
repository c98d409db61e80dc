x = 1 ' y = 2  # problem: comment-mark@7
