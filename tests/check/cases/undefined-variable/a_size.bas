dim a[nope]  # problem: undefined-variable@7
