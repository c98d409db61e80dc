declare function nettle_version_major lib "nettle" (byval a as integer) as integer
x = nettle_version_major()      # expect error 24: Incorrect number of function parameters
x = nettle_version_major(1, 2)  # expect error 24: Incorrect number of function parameters
