declare lib "x" ()                                # expect error 1: Syntax error
declare function lib "x" ()                       # expect error 1: Syntax error
declare function "f" lib "x" ()                   # expect error 1: Syntax error
declare function f(a as integer) lib "x"          # expect error 1: Syntax error
declare function f "x" ()                         # expect error 1: Syntax error
declare function f lib x ()                       # expect error 1: Syntax error
declare function f lib "x"                        # expect error 1: Syntax error
declare function f lib "x" alias g ()             # expect error 1: Syntax error
declare function f lib "x" a as integer           # expect error 1: Syntax error
declare function f lib "x" (a)                    # expect error 1: Syntax error
declare function f lib "x" (a as)                 # expect error 1: Syntax error
declare function f lib "x" (a as long)            # expect error 1: Syntax error
declare function f lib "x" (a as word)            # expect error 1: Syntax error
declare function f lib "x" (a as "integer")       # expect error 1: Syntax error
declare function f lib "x" (byval byval a as char) # expect error 1: Syntax error
declare function f lib "x" (as integer)           # expect error 1: Syntax error
declare function f lib "x" (a as integer b as integer) # expect error 1: Syntax error
declare function f lib "x" (a as integer,)        # expect error 1: Syntax error
declare function f lib "x" (,)                    # expect error 1: Syntax error
declare function f lib "x" () as                  # expect error 1: Syntax error
declare function f lib "x" () as long             # expect error 1: Syntax error
x = f()  # expect error 21: Undefined function name
