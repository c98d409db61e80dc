call f()
end
sub f()
endsub
sub F()  # problem: duplicate-procedure@5
endsub
