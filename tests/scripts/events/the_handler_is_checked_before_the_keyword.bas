event clear alarm nowhere  # expect error 21: Undefined function name
