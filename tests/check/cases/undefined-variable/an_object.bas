print file.name  # problem: undefined-variable@7
