dialog "d", 0, 0, 100, 50
  control button "go", 3, 1, 1, 20, 10
  oninit start
enddialog
end
sub start(result)
  alter 3
    colour 5  # problem: alter-line@5
  endalter
  closedialog
endsub
