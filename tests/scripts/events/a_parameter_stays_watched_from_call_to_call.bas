event create changed display
call work(1)
# expect: work 1
call work(2)
# expect: changed 2
# expect: work 2
end
sub work(n)
  print "work "; int(n)
  watch create n changed
endsub
sub display(v)
  print "changed "; int(v)
endsub
