declare function nettle_version_major lib "nettle" () as integer
print nettle_version_major()  # expect: 0
print 1 + NETTLE_version_MAJOR()  # expect: 1.000000
