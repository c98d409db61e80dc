dialog "Outer", 0, 0, 160, 60
  control statictext "outer text", 10, 5, 5, 50, 10
  control button "More", 11, 5, 20, 50, 14, "more"
  control button "Close", 12, 60, 20, 50, 14, "leave"
  onexit outerclosed
enddialog
# input: click 11
# input: click 13
# input: click 12
print "after"
end
sub more(v)
  print "before: "; controlvalue(10)
  dialog "Inner", 0, 0, 160, 60
    control statictext "inner text", 10, 5, 5, 50, 10
    control button "Close", 13, 60, 20, 50, 14, "leave"
    onexit innerclosed
  enddialog
  print "behind: "; controlvalue(10)
endsub
sub leave(v)
  print "leaving "; controlvalue(10)
  closedialog
endsub
sub innerclosed(result)
  print "inner closed "; result
endsub
sub outerclosed(result)
  print "outer closed "; result
endsub
# expect: before: outer text
# expect: leaving inner text
# expect: inner closed 1
# expect: behind: outer text
# expect: leaving outer text
# expect: outer closed 1
# expect: after
