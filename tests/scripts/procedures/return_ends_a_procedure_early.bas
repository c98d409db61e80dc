print early(1)   # expect: early
print early(2)   # expect: late
end
function early(n)
  if n = 1 then
    early = "early"
    return
  endif
  early = "late"
endfunction
