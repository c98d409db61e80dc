map create "m"
call mapset("m", "k", three())
b = mapget("m", "k")
print ubound("b"); b[2]  # expect: 3c
end
function three()
  dim three[3]
  three[0] = "a"
  three[1] = "b"
  three[2] = "c"
endfunction
