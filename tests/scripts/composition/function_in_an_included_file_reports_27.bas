# Deliberate: the text is there twice, so its definitions are too; the first one counts.
print answer()      # expect: 42.000000
end
include "part.bas"
# expect error 27 at "\nfunction answer()": Duplicate function definition
