dialog "d", 0, 0, 100, 50
  control button "go", 3, 1, 1, 20, 10, "nobody"  # problem: unknown-handler@41
  control button "on", 4, 1, 1, 20, 10, "pressed"
  oninit nobody  # problem: unknown-handler@10
  onexit done
enddialog
event create done pressed
end
sub pressed(v)
endsub
