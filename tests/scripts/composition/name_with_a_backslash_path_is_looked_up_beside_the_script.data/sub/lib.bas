print "beside the child"
