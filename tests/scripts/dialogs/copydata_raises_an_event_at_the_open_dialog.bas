event create OnCopyData received
print copydata("Target", 1, "too early")
dialog "Target", 0, 0, 120, 90
  control button "a", 10, 5, 5, 50, 14, "sends"
enddialog
# input: click 10
# input: ok
print copydata("Target", 1, "too late")
end
sub sends(v)
  print copydata("Target", 42, "now")
  print copydata("Other", 42, "never")
endsub
sub received(code, what)
  print int(code); " "; what
endsub
# expect: 0
# expect: 42 now
# expect: 1
# expect: 0
# expect: 0
