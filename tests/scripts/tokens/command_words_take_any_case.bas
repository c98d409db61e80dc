print "a"           # expect: a
PRINT "b"           # expect: b
Print "c"           # expect: c
IF 1 = 1 Then
  pRINT "d"         # expect: d
EndIf
