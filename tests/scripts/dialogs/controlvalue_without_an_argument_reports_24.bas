dialog "Word", 0, 0, 100, 60
  oninit opened
enddialog
# input: ok
print "after"
end
sub opened(r)
  call controlvalue()
# expect error 24 anywhere: Incorrect number of function parameters
  print "on"
endsub
# expect: on
# expect: after
