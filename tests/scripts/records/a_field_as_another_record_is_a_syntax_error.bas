type Inner
  a as integer
endtype
type Outer
  i as Inner  # expect error 1: Syntax error
endtype
dim o as Outer  # expect error 1: Syntax error
dim i as Inner
i.a = 1
print i.a  # expect: 1
