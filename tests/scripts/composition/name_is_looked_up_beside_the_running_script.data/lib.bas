print "beside the parent"
