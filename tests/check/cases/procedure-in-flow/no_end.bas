print "main"
sub f()  # problem: procedure-in-flow@1
endsub
