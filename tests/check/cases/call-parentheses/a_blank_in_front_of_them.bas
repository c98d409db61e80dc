call f (1)  # problem: call-parentheses@6
end
sub f(a)
endsub
