# answer: yes
next                # expect error 55: Illegal NEXT statement.
# answer: cancellation
next                # expect error 55: Illegal NEXT statement.
print "on"          # expect: on
