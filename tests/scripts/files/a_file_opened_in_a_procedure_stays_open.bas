call opener()
print readline(5)   # expect: one
end
sub opener()
  open "data" as 5 text
endsub
