print ucase("äöüé")   # expect: ÄÖÜÉ
print lcase("ÄÖÜÉ")   # expect: äöüé
