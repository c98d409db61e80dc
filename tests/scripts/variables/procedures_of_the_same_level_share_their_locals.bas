call earlier()
print later()   # expect: 5.000000
end
sub earlier()
  t = 5
endsub
function later()
  later = t
endfunction
