print 1.5; " "; int(7); " "; "text"; " "; True; " "; Nothing; "."  # expect: 1.500000 7 text 1 .
