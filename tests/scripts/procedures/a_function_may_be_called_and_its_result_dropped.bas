global N
N = 0
call raise(5)
print N   # expect: 5.000000
end
function raise(x)
  N = N + x
  raise = "dropped"
endfunction
