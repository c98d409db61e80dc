# answer: cancel
call hello ()   # expect error 1: Syntax error
print "not reached"
end
sub hello()
endsub
