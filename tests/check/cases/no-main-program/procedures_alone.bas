sub f()  # problem: no-main-program@1
endsub
# runs: error
