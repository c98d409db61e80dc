x = bare()
print "["; x; "]"
end
function bare   # expect error 23: Incorrect function definition
  bare = 1
endfunction
