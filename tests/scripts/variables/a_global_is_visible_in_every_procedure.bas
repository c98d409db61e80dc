global Shared
Shared = 1
call bump()
print Shared    # expect: 2.000000
print twice()   # expect: 4.000000
end
sub bump()
  Shared = Shared + 1
endsub
function twice()
  twice = inner()
endfunction
function inner()
  inner = Shared * 2
endfunction
