call f(1)  # problem: procedure-definition@6
end
sub f(title)  # problem: procedure-definition@7
endsub
