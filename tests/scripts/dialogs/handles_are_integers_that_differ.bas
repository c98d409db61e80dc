dialog "Handles", 0, 0, 120, 90
  control button "a", 10, 5, 5, 50, 14
  control button "b", 11, 5, 20, 50, 14
  oninit opened
enddialog
# input: ok
print getwindowhandle(); getwindowhandle(10)
end
sub opened(r)
  whole = getwindowhandle()
  first = getwindowhandle(10)
  other = getwindowhandle(11)
  if whole * first * other <> 0 then
    print "there"
  endif
  if first <> other then
    print "differ "; getwindowhandle(12)
  endif
endsub
# expect: there
# expect: differ 0
# expect: 00
