next  # problem: next-without-for@1
