a = createobject("Brindle.FileSystem")
b = a
a = 5
dim list[2]
list[1] = b
b = Nothing
c = list[1]
print c.IsFolder(".")  # expect: True
x = b.IsFolder(".")    # expect error 31: Invalid argument type
print Asked(c)         # expect: True
end

function Asked(o)
  Asked = o.IsFolder(".")
endfunction
