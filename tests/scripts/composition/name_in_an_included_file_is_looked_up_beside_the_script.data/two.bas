print "beside the script"
