dialog "d", 0, 0, 100, 50
  oninit fill
enddialog
end
sub fill(result)
  alter window
    menuitem "entry", "chosen"  # problem: unknown-handler@23
  endalter
endsub
