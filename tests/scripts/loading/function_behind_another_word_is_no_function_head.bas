# Only the first word of a line, or one behind a delimiter, opens a definition.
x = other()         # expect error 21: Undefined function name
end
rest = 1 function other()
  other = 1
endfunction
