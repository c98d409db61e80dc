greet ("you")  # problem: missing-equal@1
end
sub greet(who)
  print who
endsub
