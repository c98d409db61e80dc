dialog "Brief", 0, 0, 100, 60
  oninit opened
  onexit closed
enddialog
print "after"
end
sub opened(r)
  closedialog
endsub
sub closed(r)
  print "closed "; r
endsub
# expect: closed 1
# expect: after
