global Total
Total = 5
call add()
print Total
end
sub add()
  total = 1  # problem: global-case@3
endsub
