print "main"
end
sub f()
endsub
