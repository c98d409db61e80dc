goto main
function early()
  early = "early"
endfunction
main:
print early()   # expect: early
