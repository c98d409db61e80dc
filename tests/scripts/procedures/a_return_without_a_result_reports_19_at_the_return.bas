x = quiet()
print "on"
end
function quiet()
  return   # expect error 19: Return value of the function is not defined
  quiet = 1
endfunction
