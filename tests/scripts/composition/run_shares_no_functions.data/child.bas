x = known() # in the child
