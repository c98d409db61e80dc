x = 5
print x__#1      # expect: 5.000000
print reach()    # expect: 5.000000
print x          # expect: 6.000000
print kept__#2   # expect: 7.000000
end
function reach()
  reach = x__#1
  x__#1 = 6
  kept = 7
endfunction
