dim a as window  # problem: unknown-type@10
