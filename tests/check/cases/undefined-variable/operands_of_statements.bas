open nope for input as 1  # problem: undefined-variable@6
open "f.txt" for output as nope  # problem: undefined-variable@28
close nope  # problem: undefined-variable@7
run nope  # problem: undefined-variable@5
map create nope  # problem: undefined-variable@12
