call f(1)  # problem: procedure-arguments@6
end
sub f(a, b)
endsub
