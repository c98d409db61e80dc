dialog "d", 0, 0, 100, 50
  oninit fill
enddialog
end
sub fill(result)  # problem: missing-endfunction@5
  alter window  # problem: missing-end-block@3
    title "t"
