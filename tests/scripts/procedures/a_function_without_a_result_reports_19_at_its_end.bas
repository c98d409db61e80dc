x = quiet()
print "["; x; "]"
end
function quiet()
  y = 1
endfunction   # expect error 19: Return value of the function is not defined
