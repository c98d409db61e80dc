call work()
print "on"          # expect: on
end
function work()
x = 1               # expect error 20: ENDFUNCTION statement is missing
