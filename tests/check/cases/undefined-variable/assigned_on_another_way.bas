goto b
a:
print y + 1
end
b:
y = 1
goto a
