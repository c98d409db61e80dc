goto main
function work()
  print "a"         # expect: a
endfunction
main:
call work()
print "on"          # expect: on
