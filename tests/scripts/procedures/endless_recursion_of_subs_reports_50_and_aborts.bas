call endless()
print "not reached"
end
sub endless()
  call endless()   # expect error 50: Brindle unrecoverable error
endsub
