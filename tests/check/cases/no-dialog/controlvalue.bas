print controlvalue(3)  # problem: no-dialog@7
