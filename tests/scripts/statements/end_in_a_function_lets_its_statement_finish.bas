# The body ends without error 19, "print" shows what it has, then the run ends.
goto main
function work()
  print "a"         # expect: a
  stop
endfunction
main:
print "b"; work(); "c"
# expect: bc
print "d"
