dim n as boolean  # problem: unknown-type@10
