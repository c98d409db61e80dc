call f  # problem: call-parentheses@6
end
sub f()
endsub
