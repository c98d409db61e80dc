print "["; filesaveasdlg("new.txt", "txt", "Text|*.txt||"); "]"
# input: chosen.txt
print "["; fileopendlg("", "", "", "."); "]"
# input:
# expect: [chosen.txt]
# expect: []
