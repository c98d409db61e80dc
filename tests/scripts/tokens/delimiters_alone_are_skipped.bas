; , + - < > / * % ^ = ( ) [ ] ~ : ! ' @ & { } | ? $
print "on"          # expect: on
