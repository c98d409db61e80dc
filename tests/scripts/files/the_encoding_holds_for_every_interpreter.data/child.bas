open "other" for output as 1 text
n = writeline(1, "a", "utf16")
close 1
