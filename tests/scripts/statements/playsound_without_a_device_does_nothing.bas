playsound "missing.wav"
print "on"          # expect: on
