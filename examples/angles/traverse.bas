# TOOLMENU=Closed traverse
#
# A surveyor's closed traverse: from the interior angles and the distances of
# the field book to coordinates, with the misclosures and the area.
#
# The field book is the list of Observe() calls below. Walk the figure
# anticlockwise. Angles are written the way they are read off, DDD.MMSS: 108.4959
# is 108 degrees, 49 minutes, 59 seconds. dms2rad and rad2dms convert between
# that form and radians.
#
# Writes the points to traverse_points.csv in the current directory.

global Pi, Second, LineFeed, PointsName
Pi = 3.14159265358979
Second = Pi / 648000             # one second of arc
LineFeed = format(10, "%c")
PointsName = "traverse_points.csv"

global MaxStations, Count
global Names[100], Angles[100], Lengths[100]      # as observed
global Bearings[100], East[101], North[101]       # as computed
MaxStations = 100
Count = 0

# ---- The field book ----

call Observe("T1", 108.4959, 145.567)
call Observe("T2", 109.3142, 135.942)
call Observe("T3", 106.1922, 142.765)
call Observe("T4", 104.0150, 149.838)
call Observe("T5", 111.1722, 121.689)
StartBearing = dms2rad(102.4159)                  # from T1 to T2
East[0] = 5000
North[0] = 2000

# ---- The angles: the interior angles of the figure add up to a known sum ----

angleSum = 0
for i = 0 to Count - 1
  angleSum = angleSum + Angles[i]
next
angularMisclosure = angleSum - (Count - 2) * Pi
allowed = 10 * Second * sqr(Count)                # 10" for one angle

Bearings[0] = StartBearing
for i = 1 to Count - 1
  corrected = Angles[i] - angularMisclosure / Count
  Bearings[i] = FullCircle(Bearings[i - 1] + Pi + corrected)
next

# ---- The way round: what is missing at the end is the linear misclosure ----

missingEast = 0
missingNorth = 0
perimeter = 0
for i = 0 to Count - 1
  missingEast = missingEast + Lengths[i] * sin(Bearings[i])
  missingNorth = missingNorth + Lengths[i] * cos(Bearings[i])
  perimeter = perimeter + Lengths[i]
next
linearMisclosure = sqr(missingEast * missingEast + missingNorth * missingNorth)

# The misclosure is shared out along the way, by the lengths of the legs.
for i = 0 to Count - 1
  share = Lengths[i] / perimeter
  East[i + 1] = East[i] + Lengths[i] * sin(Bearings[i]) - missingEast * share
  North[i + 1] = North[i] + Lengths[i] * cos(Bearings[i]) - missingNorth * share
next

# ---- The sheet ----

sheet = "Station      Angle    Bearing     Length        East       North" + LineFeed
for i = 0 to Count - 1
  row = format(Names[i], "%-7s") + format(DmsText(Angles[i]), "%11s") + format(DmsText(Bearings[i]), "%11s")
  row = row + format(Lengths[i], "%11.3f") + format(East[i], "%12.3f") + format(North[i], "%12.3f")
  sheet = sheet + row + LineFeed
next
verdict = "within"
if abs(angularMisclosure) > allowed then
  verdict = "BEYOND"
endif
sheet = sheet + LineFeed
sheet = sheet + "Angular misclosure  " + format(angularMisclosure / Second, "%+.0f s, ") + verdict
sheet = sheet + format(allowed / Second, " the %.0f s allowed") + LineFeed
sheet = sheet + "Linear misclosure   " + format(linearMisclosure, "%.4f m")
if linearMisclosure > 0 then
  sheet = sheet + format(perimeter / linearMisclosure, ", 1 in %.0f")
endif
sheet = sheet + LineFeed
sheet = sheet + "Perimeter           " + format(perimeter, "%.3f m") + LineFeed
sheet = sheet + "Area                " + format(Area(), "%.1f m2") + LineFeed

open PointsName for output as 1 text
x = writeline(1, "name;east;north" + LineFeed)
for i = 0 to Count - 1
  x = writeline(1, Names[i] + format(East[i], ";%.3f") + format(North[i], ";%.3f") + LineFeed)
next
close 1
print sheet;
end


# One station: its name, the angle from the station before to the next one
# (clockwise, DDD.MMSS) and the length of the leg to the next one.
sub Observe(name, angle, length)
  if Count < MaxStations then
    Names[Count] = name
    Angles[Count] = dms2rad(angle)
    Lengths[Count] = length
    Count = Count + 1
  endif
endsub

# The same direction, from 0 up to a full circle.
function FullCircle(angle)
  do while angle < 0
    angle = angle + 2 * Pi
  loop
  do while angle => 2 * Pi
    angle = angle - 2 * Pi
  loop
  FullCircle = angle
endfunction

# 102-41-59. The angle is rounded to whole seconds before it is taken apart, so
# that 59.7 seconds become the next minute and never "60".
function DmsText(angle)
  rounded = int(angle / Second + 0.5) * Second
  packed = format(rad2dms(rounded), "%.4f")
  point = instr(packed, ".")
  DmsText = left(packed, point) + "-" + mid(packed, point + 1, 2) + "-" + mid(packed, point + 3, 2)
endfunction

# Half the sum of the cross products of neighbouring points.
function Area()
  sum = 0
  for i = 0 to Count - 1
    sum = sum + East[i] * North[i + 1] - East[i + 1] * North[i]
  next
  Area = sum / 2
endfunction
