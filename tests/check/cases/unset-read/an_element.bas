x = nobody[1]  # problem: unset-read@5
