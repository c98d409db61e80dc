a = "x"
b = a & a  # problem: not-a-statement@7
