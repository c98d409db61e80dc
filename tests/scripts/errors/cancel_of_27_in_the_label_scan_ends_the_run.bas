# answer: cancel
# expect error 27 at "\nsub f()": Duplicate function definition
print "never"
end
sub f()
endsub
sub f()
endsub
