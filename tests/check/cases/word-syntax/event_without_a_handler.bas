event create "changed", "show"  # problem: word-syntax@23
end
sub show()
  print "shown"
endsub
