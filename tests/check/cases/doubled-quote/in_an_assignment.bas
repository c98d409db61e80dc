x = "say ""hi"""  # problem: doubled-quote@11
print x
