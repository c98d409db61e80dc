dialog "d", 0, 0, 100, 50
  control button "go", 3, 1, 1, 20, 10, "chosen"  # problem: procedure-arguments@41
enddialog
end
sub chosen(a, b)
endsub
# runs: silent
