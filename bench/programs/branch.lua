-- A state machine whose states are labels.
local n = 40000000   -- size
local steps = 0
local signal = 0
local heats = 0
local cools = 0
::idle::
  steps = steps + 1
  if steps > n then
    goto finished
  end
  signal = signal + 11
  if signal > 16 then
    signal = signal - 17
  end
  if signal < 5 then
    goto heating
  end
  if signal > 11 then
    goto cooling
  end
  goto idle
::heating::
  steps = steps + 1
  heats = heats + 1
  signal = signal + 5
  if signal > 10 then
    goto cooling
  end
  goto idle
::cooling::
  steps = steps + 1
  cools = cools + 1
  signal = signal - 4
  if signal > 5 then
    goto cooling
  end
  if signal == 5 then
    goto heating
  end
  goto idle
::finished::
print(string.format("%.0f %.0f %.0f", steps, heats, cools))
