print "grün, 5 °, €, 漢字"  # expect: grün, 5 °, €, 漢字
