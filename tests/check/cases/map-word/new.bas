map new "ages"  # problem: map-word@5
