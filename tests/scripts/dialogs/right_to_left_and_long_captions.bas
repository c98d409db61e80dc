dialog "שלום עולם", 0, 0, 120, 90
  control statictext "مرحبا بالعالم", 10, 5, 5, 80, 14
  control button "a caption that is far too long for the button that bears it, and goes on and on and on", 11, 5, 20, 20, 14, "looks"
  control checkbox "日本語 & Ελληνικά", 12, 5, 35, 80, 14
  control edittext "", 13, 5, 50, 80, 14
enddialog
# input: type 13 אבג def
# input: click 11
# input: ok
end
sub looks(v)
  print controlvalue(10); "|"; len(controlvalue(11)); "|"; controlvalue(12, "text"); "|"; controlvalue(13)
endsub
# expect: مرحبا بالعالم|86|日本語 & Ελληνικά|אבג def
