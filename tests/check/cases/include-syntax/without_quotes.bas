include other.bas  # problem: include-syntax@9
