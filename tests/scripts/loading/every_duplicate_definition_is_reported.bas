print "on"          # expect: on
end
sub f()
endsub
sub f()             # expect error 27: Duplicate function definition
endsub
sub f()             # expect error 27: Duplicate function definition
endsub
