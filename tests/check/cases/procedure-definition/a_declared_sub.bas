declare sub beep lib "c" (byval a as integer)
call beep(1)  # problem: procedure-definition@6
