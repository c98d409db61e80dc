dialog "d", 0, 0, 100, 50
  oninit fill
enddialog
end
sub fill(result)
  alter window
    position nope, 1, 2, 3  # problem: undefined-variable@14
  endalter
endsub
