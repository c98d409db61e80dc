rem : function other()
: rem function other()
# : function other()
x = other()         # expect error 21: Undefined function name
end
