declare function f lib "nowhere" (byval a as integer) as integer
x = f(1, 2)  # problem: procedure-arguments@5
