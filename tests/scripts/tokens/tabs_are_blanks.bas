	print	"a"	# expect: a
	x	=	2	+	3
	print	x	# expect: 5.000000
