dialog "d", 0, 0, 100, 50
  oninit fill
enddialog
end
sub fill(result)
  print popupmenu()  # problem: built-in-arguments@9
endsub
