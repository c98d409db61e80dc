next # in the part
