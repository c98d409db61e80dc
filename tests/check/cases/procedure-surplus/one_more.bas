call f(1, 2)  # problem: procedure-surplus@6
end
sub f(a)
endsub
