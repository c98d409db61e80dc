print nobody  # problem: unset-read@7
