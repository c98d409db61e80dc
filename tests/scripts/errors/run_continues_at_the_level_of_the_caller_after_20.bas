x = 1
call work()
print x             # expect: 1.000000
end
function work()
x = 2               # expect error 20: ENDFUNCTION statement is missing
