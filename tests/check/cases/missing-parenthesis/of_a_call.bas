print len("a"  # problem: missing-parenthesis@10
