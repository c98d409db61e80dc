dialog "d", 0, 0, 100, 50
  oninit fill
enddialog
end
sub fill(result)
  alter window
    title nope  # problem: undefined-variable@11
  endalter
endsub
