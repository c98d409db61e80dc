# TOOLMENU=GPS track report
#
# Reads the log of a GPS receiver (NMEA 0183 text), adds up the way that was
# walked and writes a report with one line for every fix.
#
# The log: track.log in the current directory if there is one, else the walk
# that comes with this example. The report: track_report.txt in the current
# directory. A summary is shown at the end.

global Pi, Degree, EarthRadius
Pi = 3.14159265358979
Degree = Pi / 180
EarthRadius = 6371008.8          # metres, the mean radius

global LineFeed, ReportName
LineFeed = format(10, "%c")
ReportName = "track_report.txt"

# What DecimalDegrees and SecondsOfDay answer to an empty field.
global NoAngle, NoTime
NoAngle = 999
NoTime = -1

# The checksum's tools: the printable characters in the order of their codes,
# the hexadecimal digits, and the exclusive or of any two of these digits.
global Printable, FirstCode, HexDigits, NibbleXor[256]
call PrepareChecksum()

# The sentence in hand, cut at its commas.
global Fields[40], FieldCount, MaxFields
MaxFields = 40
FieldCount = 0

# What has been counted.
global LineCount, CommentCount, OtherCount, SentenceCount
global BadChecksums, NoChecksums, FixCount, NoFixCount
LineCount = 0
CommentCount = 0
OtherCount = 0
SentenceCount = 0
BadChecksums = 0
NoChecksums = 0
FixCount = 0
NoFixCount = 0

# The way so far.
global FirstLat, FirstLon, FirstTime, LastLat, LastLon, LastTime
global TotalDistance, TrackTime
TotalDistance = 0
TrackTime = 0

# Marks on the way; a negative count or speed stands for "none seen".
global HeightCount, LowestHeight, HighestHeight
global FewestSatellites, MostSatellites, TopSpeed, TrackDate
HeightCount = 0
FewestSatellites = -1
MostSatellites = -1
TopSpeed = -1
TrackDate = ""

global LogName, Source
LogName = FindLog()
if LogName = "" then
  print "There is no track.log here, and the example's own log was not found either."
  end
endif
Source = FindSource(LogName)

open LogName for input as 1 text
open ReportName for output as 2 text
headline = "Track of " + LogName
call Report(headline)
call Report("")
call Report("   fix      time     latitude    longitude    height     leg m  bearing")
do while iseof(1) = False
  call TakeLine(readline(1))
loop
close 1

summary = Summary()
call Report("")
x = writeline(2, summary)
close 2
print headline + LineFeed + summary + Item("Report", ReportName);
end


# ---- Files ----

# The log to read, or "" when there is none. The example's own log is found
# from its own folder and from the root of the source tree.
function FindLog()
  FindLog = ""
  if FileExists("examples/gps_track/walk.log") = True then
    FindLog = "examples/gps_track/walk.log"
  endif
  if FileExists("walk.log") = True then
    FindLog = "walk.log"
  endif
  if FileExists("track.log") = True then
    FindLog = "track.log"
  endif
endfunction

# findfiles leaves its result not set when nothing matches; ubound is 0 then.
function FileExists(path)
  FileExists = False
  found = findfiles(path, "")
  if ubound("found") > 0 then
    FileExists = True
  endif
endfunction

sub Report(row)
  x = writeline(2, row + LineFeed)
endsub

# The sentence that tells the fixes: GGA, which has the height as well, or RMC
# for a receiver that sends no GGA. Both would count every fix twice.
function FindSource(path)
  FindSource = "RMC"
  open path for input as 1 text
  do while iseof(1) = False
    if instr(readline(1), "GGA,") = 3 then
      FindSource = "GGA"
      close 1
      return
    endif
  loop
  close 1
endfunction


# ---- Lines and sentences ----

sub TakeLine(record)
  LineCount = LineCount + 1
  first = left(record, 1)
  if first = "$" then
    call ReadSentence(record)
    return
  endif
  if first = "!" then
    call ReadSentence(record)
    return
  endif
  if first = "#" then
    CommentCount = CommentCount + 1
  else
    OtherCount = OtherCount + 1
  endif
endsub

# A sentence without a checksum may be the front part of a longer one, so it is
# counted but not believed.
sub ReadSentence(sentence)
  SentenceCount = SentenceCount + 1
  star = instr(sentence, "*")
  if star < 0 then
    NoChecksums = NoChecksums + 1
    return
  endif
  body = mid(sentence, 1, star - 1)
  if Checksum(body) != ucase(mid(sentence, star + 1, 2)) then
    BadChecksums = BadChecksums + 1
    return
  endif

  call SplitFields(body)
  kind = SentenceKind(Field(0))
  if kind = "GGA" then
    call ReadGga()
  endif
  if kind = "RMC" then
    call ReadRmc()
  endif
endsub

# GPGGA, GNGGA and so on differ only in the satellites they come from; a name
# that begins with "P" is a maker's own and may mean anything.
function SentenceKind(name)
  SentenceKind = ""
  if len(name) = 5 then
    if left(name, 1) != "P" then
      SentenceKind = right(name, 3)
    endif
  endif
endfunction

sub SplitFields(body)
  FieldCount = 0
  rest = body
  comma = instr(rest, ",")
  do while comma => 0
    call AddField(left(rest, comma))
    rest = mid(rest, comma + 1, len(rest))
    comma = instr(rest, ",")
  loop
  call AddField(rest)
endsub

sub AddField(piece)
  if FieldCount < MaxFields then
    Fields[FieldCount] = piece
    FieldCount = FieldCount + 1
  endif
endsub

# A field that the sentence does not have reads as an empty one.
function Field(number)
  Field = ""
  if number < FieldCount then
    Field = Fields[number]
  endif
endfunction

# GGA: 1 time, 2-3 latitude, 4-5 longitude, 6 kind of fix (0 is none),
# 7 satellites used, 9 height above the sea in metres.
sub ReadGga()
  if Source != "GGA" then
    return
  endif
  lat = DecimalDegrees(Field(2), Field(3))
  lon = DecimalDegrees(Field(4), Field(5))
  quality = val(Field(6))
  if quality < 1 then
    lat = NoAngle
  endif
  call ReadFix(Field(1), lat, lon, Field(9))
  if quality > 0 then
    call NoteSatellites(Field(7))
  endif
endsub

# RMC: 1 time, 2 status (A is a fix), 3-4 latitude, 5-6 longitude, 7 speed in
# knots, 9 date as ddmmyy.
sub ReadRmc()
  lat = NoAngle
  lon = NoAngle
  if Field(2) = "A" then
    lat = DecimalDegrees(Field(3), Field(4))
    lon = DecimalDegrees(Field(5), Field(6))
    call NoteSpeed(Field(7))
    call NoteDate(Field(9))
  endif
  if Source = "RMC" then
    call ReadFix(Field(1), lat, lon, "")
  endif
endsub


# ---- The checksum ----

# The language has no exclusive or and no character codes, so both become
# tables: the place of a character among the printable ones gives its code, and
# the exclusive or of two bytes is that of their two hexadecimal digits.
sub PrepareChecksum()
  HexDigits = "0123456789ABCDEF"
  FirstCode = 32
  Printable = ""
  for code = FirstCode to 126
    Printable = Printable + format(code, "%c")
  next
  for a = 0 to 15
    for b = 0 to 15
      NibbleXor[a * 16 + b] = XorOfNibbles(a, b)
    next
  next
endsub

# Bit by bit, from the highest: a bit is set when just one of the two has it.
function XorOfNibbles(a, b)
  sum = 0
  bit = 8
  do while bit => 1
    bits = 0
    if a => bit then
      bits = bits + 1
      a = a - bit
    endif
    if b => bit then
      bits = bits + 1
      b = b - bit
    endif
    if bits = 1 then
      sum = sum + bit
    endif
    bit = bit / 2
  loop
  XorOfNibbles = sum
endfunction

# The two digits that must stand behind the "*". A character that no sentence
# may hold makes every checksum wrong.
function Checksum(body)
  high = 0
  low = 0
  for i = 0 to len(body) - 1
    place = instr(Printable, mid(body, i, 1))
    if place < 0 then
      Checksum = "not printable"
      return
    endif
    code = place + FirstCode
    codeHigh = int(code / 16)
    codeLow = code - codeHigh * 16
    high = NibbleXor[high * 16 + codeHigh]
    low = NibbleXor[low * 16 + codeLow]
  next
  Checksum = mid(HexDigits, high, 1) + mid(HexDigits, low, 1)
endfunction


# ---- What the fields say ----

# 4636.7500 and "N" (46 degrees 36.75 minutes north) give 46.6125; south and
# west are negative.
function DecimalDegrees(packed, side)
  DecimalDegrees = NoAngle
  if packed = "" then
    return
  endif
  if side = "" then
    return
  endif
  number = val(packed)
  degrees = int(number / 100)
  angle = degrees + (number - degrees * 100) / 60
  if instr("SW", side) => 0 then
    angle = -angle
  endif
  DecimalDegrees = angle
endfunction

# 091230.50 gives 33150.5 seconds since midnight.
function SecondsOfDay(clock)
  SecondsOfDay = NoTime
  if len(clock) => 6 then
    SecondsOfDay = val(left(clock, 2)) * 3600 + val(mid(clock, 2, 2)) * 60 + val(mid(clock, 4, 9))
  endif
endfunction

function ClockText(seconds)
  ClockText = "--:--:--"
  if seconds => 0 then
    whole = int(seconds)
    hours = int(whole / 3600)
    minutes = int((whole - hours * 3600) / 60)
    rest = whole - hours * 3600 - minutes * 60
    ClockText = format(hours, "%02d") + format(minutes, ":%02d") + format(rest, ":%02d")
  endif
endfunction

# Seconds between two times of day. A step back of more than half a day is
# midnight, a smaller one a log put together from pieces: it counts as none.
function SecondsBetween(before, after)
  SecondsBetween = 0
  if before < 0 then
    return
  endif
  if after < 0 then
    return
  endif
  seconds = after - before
  if seconds < -43200 then
    seconds = seconds + 86400
  endif
  SecondsBetween = max(seconds, 0)
endfunction

sub NoteSatellites(used)
  if used = "" then
    return
  endif
  number = val(used)
  MostSatellites = max(MostSatellites, number)
  if FewestSatellites < 0 then
    FewestSatellites = number
  endif
  FewestSatellites = min(FewestSatellites, number)
endsub

# A knot is 1852 metres an hour.
sub NoteSpeed(knots)
  if knots != "" then
    TopSpeed = max(TopSpeed, val(knots) * 1852 / 3600)
  endif
endsub

# Two digits of the year: the system started in 1980.
sub NoteDate(date)
  if TrackDate = "" then
    if len(date) = 6 then
      century = "20"
      if val(right(date, 2)) => 80 then
        century = "19"
      endif
      TrackDate = century + right(date, 2) + "-" + mid(date, 2, 2) + "-" + left(date, 2)
    endif
  endif
endsub


# ---- The way ----

# One fix: the leg from the fix before it, the marks, a line of the report.
sub ReadFix(clock, lat, lon, height)
  if lat = NoAngle then
    NoFixCount = NoFixCount + 1
    return
  endif
  if lon = NoAngle then
    NoFixCount = NoFixCount + 1
    return
  endif

  time = SecondsOfDay(clock)
  leg = 0
  bearingText = "-"
  if FixCount = 0 then
    FirstLat = lat
    FirstLon = lon
    FirstTime = time
  else
    leg = Distance(LastLat, LastLon, lat, lon)
    if leg > 0 then
      bearingText = format(Bearing(LastLat, LastLon, lat, lon), "%.1f")
    endif
    TotalDistance = TotalDistance + leg
    TrackTime = TrackTime + SecondsBetween(LastTime, time)
  endif
  FixCount = FixCount + 1
  LastLat = lat
  LastLon = lon
  LastTime = time

  heightText = "-"
  if height != "" then
    call NoteHeight(val(height))
    heightText = format(val(height), "%.1f")
  endif

  row = format(FixCount, "%6d") + format(ClockText(time), "%10s")
  row = row + format(lat, "%13.6f") + format(lon, "%13.6f") + format(heightText, "%10s")
  call Report(row + format(leg, "%10.2f") + format(bearingText, "%9s"))
endsub

sub NoteHeight(height)
  if HeightCount = 0 then
    LowestHeight = height
    HighestHeight = height
  endif
  HeightCount = HeightCount + 1
  LowestHeight = min(LowestHeight, height)
  HighestHeight = max(HighestHeight, height)
endsub

# Great-circle distance in metres (haversine, which stays exact for the short
# legs of a walk). min() keeps rounding from leaving the range of asin.
function Distance(lat1, lon1, lat2, lon2)
  sinLat = sin((lat2 - lat1) * Degree / 2)
  sinLon = sin((lon2 - lon1) * Degree / 2)
  h = sinLat * sinLat + cos(lat1 * Degree) * cos(lat2 * Degree) * sinLon * sinLon
  Distance = 2 * EarthRadius * asin(min(1, sqr(h)))
endfunction

# Bearing at the first point towards the second, 0 to 360 degrees from north.
function Bearing(lat1, lon1, lat2, lon2)
  turn = (lon2 - lon1) * Degree
  phi1 = lat1 * Degree
  phi2 = lat2 * Degree
  east = sin(turn) * cos(phi2)
  north = cos(phi1) * sin(phi2) - sin(phi1) * cos(phi2) * cos(turn)
  angle = Direction(east, north) / Degree
  if angle < 0 then
    angle = angle + 360
  endif
  Bearing = angle
endfunction

# The angle from north to the vector, -Pi to Pi: atan knows only half the
# circle, so the other half is told apart by the signs.
function Direction(east, north)
  if north > 0 then
    Direction = atan(east / north)
    return
  endif
  if north < 0 then
    half = Pi
    if east < 0 then
      half = -Pi
    endif
    Direction = atan(east / north) + half
    return
  endif
  Direction = 0
  if east > 0 then
    Direction = Pi / 2
  endif
  if east < 0 then
    Direction = -Pi / 2
  endif
endfunction


# ---- The summary ----

function Item(name, figure)
  Item = format(name, "%-20s") + figure + LineFeed
endfunction

function Summary()
  all = Item("Lines", format(LineCount, "%d"))
  all = all + Item("Comments", format(CommentCount, "%d"))
  all = all + Item("Other lines", format(OtherCount, "%d"))
  all = all + Item("Sentences", format(SentenceCount, "%d"))
  all = all + Item("Bad checksums", format(BadChecksums, "%d"))
  all = all + Item("Without checksum", format(NoChecksums, "%d"))
  all = all + Item("Fixes", format(FixCount, "%d") + " (from " + Source + ")")
  all = all + Item("Without a fix", format(NoFixCount, "%d"))
  if FixCount > 0 then
    all = all + WaySummary() + MarksSummary()
  endif
  Summary = all
endfunction

function WaySummary()
  all = ""
  if TrackDate != "" then
    all = all + Item("Date", TrackDate)
  endif
  all = all + Item("Time (UTC)", ClockText(FirstTime) + " to " + ClockText(LastTime))
  all = all + Item("Distance", format(TotalDistance, "%.2f m"))
  direct = Distance(FirstLat, FirstLon, LastLat, LastLon)
  directText = format(direct, "%.2f m")
  if direct > 0 then
    directText = directText + format(Bearing(FirstLat, FirstLon, LastLat, LastLon), ", bearing %.1f")
  endif
  all = all + Item("Start to end", directText)
  if TrackTime > 0 then
    speed = TotalDistance / TrackTime
    all = all + Item("Average speed", format(speed, "%.2f m/s") + format(speed * 3.6, " (%.1f km/h)"))
  endif
  WaySummary = all
endfunction

function MarksSummary()
  all = ""
  if TopSpeed => 0 then
    all = all + Item("Highest speed", format(TopSpeed, "%.2f m/s"))
  endif
  if HeightCount > 0 then
    all = all + Item("Lowest height", format(LowestHeight, "%.1f m"))
    all = all + Item("Highest height", format(HighestHeight, "%.1f m"))
  endif
  if MostSatellites => 0 then
    all = all + Item("Satellites used", format(FewestSatellites, "%d") + " to " + format(MostSatellites, "%d"))
  endif
  MarksSummary = all
endfunction
