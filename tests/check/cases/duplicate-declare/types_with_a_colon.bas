declare function f lib "nowhere" () as integer: print "on"
