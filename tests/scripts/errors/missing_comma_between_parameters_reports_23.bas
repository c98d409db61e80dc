call work(1, 2)
print "on"          # expect: on
end
sub work(a b)       # expect error 23: Incorrect function definition
endsub
