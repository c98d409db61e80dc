event create "changed" "show"
throw changed(1  # problem: missing-parenthesis@14
end
sub show(a)
  print a
endsub
