x = 1
call make_it()
print x   # expect: 2.000000
print X   # expect: 1.000000
end
sub make_it()
  global x
  x = 2
endsub
