declare function no_such_routine lib "nettle" () as integer
x = no_such_routine()  # expect error 26: Incorrect external function name
