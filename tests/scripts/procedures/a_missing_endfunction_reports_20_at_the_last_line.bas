kept = 1
x = cut()
print kept; "["; x; "]"
end
function cut()
  cut = 1
rem the text ends here   # expect error 20: ENDFUNCTION statement is missing
