print maybe(1)
x = maybe(0)
print "["; x; "]"
end
function maybe(n)
  if n = 1 then
    maybe = "given"
  endif
endfunction   # expect error 19: Return value of the function is not defined
