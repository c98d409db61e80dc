dialog "List", 0, 0, 120, 90
  control multilistbox "", 10, 5, 5, 80, 40
  control button "Read", 11, 5, 65, 50, 14, "show"
  oninit opened
enddialog
# input: click 11
# input: select 10 2
# input: select 10 0
# input: click 11
# input: select 10 2
# input: click 11
# input: ok
end
sub opened(r)
  alter 10
    value "a"
    value "b"
    value "c"
  endalter
endsub
sub show(v)
  texts = controlvalue(10)
  places = controlvalue(10, "selection")
  print ubound("texts"); ": ";
  for i = 0 to ubound("texts") - 1
    print texts[i]; "="; places[i]; " ";
  next
  print "."
endsub
# expect: 0: .
# expect: 2: a=0 c=2 .
# expect: 1: a=0 .
