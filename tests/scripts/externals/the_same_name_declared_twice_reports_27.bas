declare function beep lib "nowhere" (byval a as integer)
declare sub BEEP lib "elsewhere" ()      # expect error 27: Duplicate function definition
declare function other lib "x" alias "Beep" ()  # expect error 27: Duplicate function definition
declare function len lib "x" ()          # expect error 27: Duplicate function definition
