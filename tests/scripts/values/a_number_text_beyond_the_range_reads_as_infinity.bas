print val("1e400")    # expect: inf
print val("-1e400")   # expect: -inf
print val("1e-400")   # expect: 0.000000
