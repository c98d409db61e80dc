print +"5"          # expect: 5
