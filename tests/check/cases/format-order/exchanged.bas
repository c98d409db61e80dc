print format("%d", 5)  # problem: format-order@7
