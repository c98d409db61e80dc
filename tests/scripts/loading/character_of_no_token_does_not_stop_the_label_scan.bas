goto later
_ . ` \
later:
print known()       # expect: 1.000000
end
_
function known()
  known = 1
endfunction
