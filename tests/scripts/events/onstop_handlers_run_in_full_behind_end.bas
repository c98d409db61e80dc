event create onstop long
end
sub long(name)
  n = 0
  for i = 1 to 3
    n = n + twice(i)
  next
  print int(n)
endsub
function twice(n)
  twice = 2 * n
endfunction
# expect: 12
