global List[3]
call fill()
print List[0]; List[1]; List[2]   # expect: abc
end
sub fill()
  List[0] = "a"
  List[1] = "b"
  List[2] = "c"
endsub
