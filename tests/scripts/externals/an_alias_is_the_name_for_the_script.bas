declare function nettle_version_major lib "nettle" alias "Major" () as integer
print major() ; MAJOR()  # expect: 00
x = nettle_version_major()  # expect error 21: Undefined function name
