# The pass for "library" and "include" stops at such a character.
x = known()         # expect error 21: Undefined function name
end
_
library "lib.bas"
