event create done nobody  # problem: unknown-function@19
