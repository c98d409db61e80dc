call make_it()
print Made   # expect: 7.000000
end
sub make_it()
  global Made
  Made = 7
endsub
