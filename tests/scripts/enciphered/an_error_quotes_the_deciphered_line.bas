encrypt
 190,207,211,235,121,199,179,189,80,13,128,159,185,228,99,58,51,67,245,144,147,199,7,221,82,107,84,161,195,155,10,129
# expect: hi
# expect error 55 at "\nnext": Illegal NEXT statement.
# expect: behind
