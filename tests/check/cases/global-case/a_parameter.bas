global Total
Total = 1
call add(2)
end
sub add(total)
  total = total + 1
  print total
endsub
