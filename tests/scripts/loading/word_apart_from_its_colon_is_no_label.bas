goto a              # expect error 7: Duplicate label
end
a :
