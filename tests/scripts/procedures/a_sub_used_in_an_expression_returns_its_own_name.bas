print seven()   # expect: 7.000000
end
sub seven()
  seven = 7
endsub
