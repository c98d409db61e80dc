# Runs in the example host, which registers "batterylevel".
level = batterylevel()
if level < 20 then
  print "Change the battery: "; level; " %"
else
  print "Battery at "; level; " %"
endif
