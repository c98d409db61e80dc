# The label is no delimiter.
x = other()         # expect error 21: Undefined function name
end
place: function other()
  other = 1
endfunction
