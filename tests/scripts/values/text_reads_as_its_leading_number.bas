print val("12abc")    # expect: 12.000000
print val("abc")      # expect: 0.000000
print val("")         # expect: 0.000000
print val(" 3.5e2")   # expect: 350.000000
print val("12")       # expect: 12.000000
print val("-12.75")   # expect: -12.750000
print val("+5")       # expect: 5.000000
print val(".5")       # expect: 0.500000
print val("5.")       # expect: 5.000000
print val("-.25")     # expect: -0.250000
print val("--5")      # expect: 0.000000
print val("- 5")      # expect: 0.000000
print val("+")        # expect: 0.000000
print val("-")        # expect: 0.000000
print val(".")        # expect: 0.000000
print val("1,5")      # expect: 1.000000
print val("1.2.3")    # expect: 1.200000
print val("1e")       # expect: 1.000000
print val("1e+")      # expect: 1.000000
print val("1e+2")     # expect: 100.000000
print val("1e-2")     # expect: 0.010000
print val("1E2")      # expect: 100.000000
print val("1d2")      # expect: 1.000000
print val("1 2")      # expect: 1.000000
print val("007")      # expect: 7.000000
print val("1_000")    # expect: 1.000000
print val("e5")       # expect: 0.000000
print val(".e5")      # expect: 0.000000
print val("3e2e1")    # expect: 300.000000
