goto main
function work()
  work = work()
endfunction
main:
x = work()
print "never"
# expect error 50 anywhere: Brindle unrecoverable error
