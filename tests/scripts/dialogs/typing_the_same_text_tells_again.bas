# options: --ui=console --on-error=ask
dialog "D", 0, 0, 200, 200
  control edittext "e", 10, 5, 5, 50, 10, "told"
enddialog
# input: type 10 e
# input: ok
end
sub told(v)
  print "told "; v
endsub
# expect: told e
