dialog "d", 0, 0, 100, 50
  oninit start  # problem: procedure-arguments@10
enddialog
end
sub start(result, more)
endsub
