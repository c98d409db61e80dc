call greet("you")   # expect: hello you
end
sub greet(who)
  print "hello "; who
endsub
