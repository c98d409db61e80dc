print "beside the library"
