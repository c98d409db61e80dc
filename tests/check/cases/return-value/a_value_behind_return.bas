print f(2)  # problem: no-result@7
end
function f(a)  # problem: return-value@10
  return a  # problem: return-value@10
endfunction
# runs: error
