throw done  # problem: call-parentheses@7
