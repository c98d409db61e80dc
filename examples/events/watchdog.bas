# A watchdog for a field data logger. It stays resident in the logger's host
# program, which throws "Reading" whenever an instrument has measured something.
# The watchdog's own timer looks whether readings still come; after two checks
# without any it throws "SensorLost" and goes off duty.

global Readings, Silence, Highest
Readings = 0
Silence = 0
Highest = 0

event create Reading TakeReading
event create OnTimer Check

# The host's own function serves the alarm, beside the one of this script.
event create SensorLost Report
event create SensorLost sounder

# A new highest value is news wherever it is set.
event create NewHighest ShowHighest
watch create Highest NewHighest

stayresident
timerstart 20
print "watchdog on duty"
end

sub TakeReading(volts)
  Readings = Readings + 1
  if volts > Highest then
    Highest = volts
  endif
endsub

sub ShowHighest(volts)
  print format(volts, "highest so far: %.2f V")
endsub

# Called by the timer; what came since the last check decides.
sub Check(nothing)
  if Readings = 0 then
    Silence = Silence + 1
    print "check: silence"
  else
    print format(Readings, "check: %d readings")
    Silence = 0
  endif
  Readings = 0
  if Silence = 2 then
    throw SensorLost("voltmeter", Silence)
    timerstop
    print "watchdog off duty"
  endif
endsub

sub Report(sensor, checks)
  print sensor; format(checks, " silent for %d checks")
endsub
