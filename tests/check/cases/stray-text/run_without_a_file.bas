run  # problem: stray-text@1
runexe  # problem: stray-text@1
