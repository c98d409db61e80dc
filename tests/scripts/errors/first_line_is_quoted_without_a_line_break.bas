next                # expect error 55: Illegal NEXT statement.
