call first()
call later()
end
sub first()
  kept = 5
endsub
sub later()
  print kept + 1
endsub
