print len(repeat("abcdefgh", 8388608))   # expect: 67108864
