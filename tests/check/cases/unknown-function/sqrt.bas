print sqrt(4)  # problem: unknown-function@7
