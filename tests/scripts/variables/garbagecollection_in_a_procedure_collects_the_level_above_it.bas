kept = 1
print clean()   # expect: 1
print kept      # expect: 1.000000
end
function clean()
  call leave()
  clean = garbagecollection()
endfunction
sub leave()
  a = 1
endsub
