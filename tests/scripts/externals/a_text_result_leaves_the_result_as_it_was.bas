declare function nettle_version_major lib "nettle" () as string
declare function nettle_version_minor lib "nettle" () as unicode
declare function nettle_get_hashes lib "nettle" ()
print "[" ; nettle_version_major() ; nettle_version_minor() ; nettle_get_hashes() ; "]"  # expect: []
