global a, b
a = 0
b = 0
event create achanged seta
event create bchanged setb
watch create a achanged
watch create b bchanged
a = 1
print "not met"
end
sub seta(v)
  b = v
endsub
sub setb(v)
  a = v
endsub
# expect error 50 anywhere: Brindle unrecoverable error
