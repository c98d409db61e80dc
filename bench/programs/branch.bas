# A state machine whose states are labels.
n = 40000000   # size
steps = 0
signal = 0
heats = 0
cools = 0
idle:
  steps = steps + 1
  if steps > n then
    goto finished
  endif
  signal = signal + 11
  if signal > 16 then
    signal = signal - 17
  endif
  if signal < 5 then
    goto heating
  endif
  if signal > 11 then
    goto cooling
  endif
  goto idle
heating:
  steps = steps + 1
  heats = heats + 1
  signal = signal + 5
  if signal > 10 then
    goto cooling
  endif
  goto idle
cooling:
  steps = steps + 1
  cools = cools + 1
  signal = signal - 4
  if signal > 5 then
    goto cooling
  endif
  if signal = 5 then
    goto heating
  endif
  goto idle
finished:
print format(steps, "%.0f"); " "; format(heats, "%.0f"); " "; format(cools, "%.0f")
