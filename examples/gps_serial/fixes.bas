# TOOLMENU=GPS fixes to a table
#
# Listens to the GPS receiver on serial port COM1 (4800 baud, the rate of the
# NMEA 0183 standard) and appends a record for every fix to the table fixes.dbf
# in the current directory, which is made when there is none. One line shows how
# far it is. The script ends when the receiver has been silent for ten seconds:
# switch the receiver off or pull the plug.
#
# README.md beside this script says how to give a receiver the name COM1.

library "nmea.bas"

global Port, BaudRate, ReadTimeout, SilenceLimit, TableName
Port = 1
BaudRate = 4800
ReadTimeout = 1000               # milliseconds of one read without a byte
SilenceLimit = 10                # such reads, one after the other
TableName = "fixes.dbf"

global LineFeed, CarriageReturn
LineFeed = format(10, "%c")
CarriageReturn = format(13, "%c")

# What has been counted.
global SentenceCount, BadCount, NoFixCount, FixCount
SentenceCount = 0
BadCount = 0
NoFixCount = 0
FixCount = 0

# What has come of a line whose end has not come yet.
global Pending
Pending = ""

# The last fix, what the receiver has said about the day, and whether it sends
# GGA, which has the height as well.
global LastTime, LastPlace, DayKnown, DayTime, SeenGga, Broken
LastTime = ""
LastPlace = ""
DayKnown = ""
DayTime = -1
SeenGga = False
Broken = False

call PrepareNmea()

global Table
Table = OpenTable()
if Table < 0 then
  end
endif
before = dbfnumrecords(Table)

x = comportopen(Port, BaudRate, 0, 0, ReadTimeout)
# Opening only takes the number; whether the device is there shows in writing. A
# port that is not open gives no value at all, which equals nothing.
opened = False
if comportwrite(Port, "") = True then
  opened = True
endif
if opened = False then
  x = dbfclose(Table)
  print "COM1 does not open: README.md says which device it is."
  end
endif

silence = 0
do while silence < SilenceLimit
  received = comportread(Port)
  if received = "" then
    silence = silence + 1
  else
    silence = 0
    call TakeReceived(received)
  endif
  if Broken = True then
    silence = SilenceLimit
  endif
loop

print ""
x = comportclose(Port)
after = dbfnumrecords(Table)
x = dbfclose(Table)
if Broken = True then
  print "The table took no more records: is the disk full?"
endif
print Item("Sentences", SentenceCount) + Item("Damaged", BadCount) + Item("Without a fix", NoFixCount);
print Item("Fixes", FixCount) + Item("Records before", before) + Item("Records now", after);
end


# ---- The table ----

# The handle of the table, below 0 when it cannot be used. A file of that name is
# never written over.
function OpenTable()
  OpenTable = -1
  found = findfiles(TableName, "")
  if ubound("found") > 0 then
    handle = dbfopen(TableName)
    if handle < 0 then
      print TableName + " is there but cannot be opened as a table."
      return
    endif
    if dbfnumfields(handle) != 6 then
      print TableName + " is a table of something else."
      x = dbfclose(handle)
      return
    endif
    OpenTable = handle
    return
  endif

  dim dayField[3], clockField[3], latField[4], lonField[4], heightField[4], usedField[3]
  dayField[0] = "DAY"
  dayField[1] = "DATE"
  dayField[2] = 8
  clockField[0] = "CLOCK"
  clockField[1] = "CHAR"
  clockField[2] = 8
  latField[0] = "LAT"
  latField[1] = "NUMERIC"
  latField[2] = 18
  latField[3] = 6
  lonField[0] = "LON"
  lonField[1] = "NUMERIC"
  lonField[2] = 18
  lonField[3] = 6
  heightField[0] = "HEIGHT"
  heightField[1] = "NUMERIC"
  heightField[2] = 18
  heightField[3] = 1
  usedField[0] = "SATELLITES"
  usedField[1] = "NUMERIC"
  usedField[2] = 18
  handle = dbfcreate(TableName, dayField, clockField, latField, lonField, heightField, usedField)
  if handle < 0 then
    print TableName + " cannot be made here."
  endif
  OpenTable = handle
endfunction


# ---- From bytes to sentences ----

# A reply ends wherever the receiver paused, so it may begin and end inside a
# line.
sub TakeReceived(received)
  Pending = Pending + received
  place = instr(Pending, LineFeed)
  do while place => 0
    call TakeLine(replace(left(Pending, place), CarriageReturn, ""))
    Pending = mid(Pending, place + 1, len(Pending))
    place = instr(Pending, LineFeed)
  loop
  # No line end for so long is no receiver, or another baud rate.
  if len(Pending) > 2000 then
    Pending = ""
    BadCount = BadCount + 1
    call ShowProgress()
  endif
endsub

sub TakeLine(record)
  if record = "" then
    return
  endif
  if TakeSentence(record) != True then
    BadCount = BadCount + 1
    call ShowProgress()
    return
  endif
  SentenceCount = SentenceCount + 1
  kind = SentenceKind()
  if kind = "GGA" then
    call ReadGga()
  endif
  if kind = "RMC" then
    call ReadRmc()
  endif
endsub

# GGA: 1 time, 2-3 latitude, 4-5 longitude, 6 kind of fix (0 is none),
# 7 satellites used, 9 height above the sea in metres.
sub ReadGga()
  SeenGga = True
  lat = NoAngle
  lon = NoAngle
  if val(Field(6)) > 0 then
    lat = DecimalDegrees(Field(2), Field(3))
    lon = DecimalDegrees(Field(4), Field(5))
  endif
  call TakeFix(Field(1), lat, lon, Field(9), Field(7))
endsub

# RMC: 1 time, 2 status (A is a fix), 3-4 latitude, 5-6 longitude, 9 date as
# ddmmyy. Its fixes count only for a receiver that sends no GGA.
sub ReadRmc()
  lat = NoAngle
  lon = NoAngle
  if Field(2) = "A" then
    lat = DecimalDegrees(Field(3), Field(4))
    lon = DecimalDegrees(Field(5), Field(6))
    DayKnown = DayText(Field(9))
    DayTime = SecondsOfDay(Field(1))
  endif
  if SeenGga = False then
    call TakeFix(Field(1), lat, lon, "", "")
  endif
endsub


# ---- From fixes to records ----

sub TakeFix(time, lat, lon, height, used)
  usable = True
  if lat = NoAngle then
    usable = False
  endif
  if lon = NoAngle then
    usable = False
  endif
  if usable = False then
    NoFixCount = NoFixCount + 1
    call ShowProgress()
    return
  endif
  # Both kinds of sentence tell of one moment.
  if time = LastTime then
    return
  endif
  LastTime = time
  LastPlace = format(lat, "%.6f") + format(lon, " %.6f")
  done = dbfappend(Table, DayOf(time), ClockText(time), format(lat, "%.6f"), format(lon, "%.6f"), height, used)
  if done = True then
    FixCount = FixCount + 1
    call ShowProgress()
  else
    Broken = True
  endif
endsub

# The day that RMC told last, unless midnight has passed since: then the next RMC
# tells the new one.
function DayOf(time)
  DayOf = ""
  if SecondsOfDay(time) => DayTime then
    DayOf = DayKnown
  endif
endfunction


# ---- What the user sees ----

# One line, written over itself.
sub ShowProgress()
  row = format(FixCount, "%d fixes") + format(BadCount, ", %d damaged")
  if LastTime = "" then
    row = row + ", waiting for the first fix"
  else
    row = row + ", last " + ClockText(LastTime) + " at " + LastPlace
  endif
  print CarriageReturn + format(row, "%-70s");
endsub

function Item(name, figure)
  Item = format(name, "%-16s") + format(figure, "%d") + LineFeed
endfunction
