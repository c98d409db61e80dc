global Rate
Rate = 1
print use(5)   # expect: 5.000000
print Rate     # expect: 5.000000
end
function use(Rate)
  use = Rate
endfunction
