print f()    # expect: went on
end
function f()
  dim a[0]   # expect error 32: Incorrect array size
  f = "went on"
endfunction
