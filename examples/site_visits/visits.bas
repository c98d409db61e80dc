# TOOLMENU=Site visits
#
# A form for field work: a list of visits, and a property sheet of two pages for
# one visit. Every visit is a record of the dBase table visits.dbf in the current
# directory, which is made when there is none. The window's menu has a summary.
#
# On the console the same forms are driven by commands:
#   brindle --ui=console visits.bas < visits.input

global TableName, Table, LineFeed
TableName = "visits.dbf"
LineFeed = format(10, "%c")

# The kinds of sites, as the combo box offers them.
global Kinds[4]
Kinds[0] = "Pond"
Kinds[1] = "Meadow"
Kinds[2] = "Wood"
Kinds[3] = "Quarry"

# The record that the sheet is about, -1 for a new one, and the one that is
# chosen in the list.
global Current, Chosen
Current = -1
Chosen = -1

Table = OpenTable()
if Table < 0 then
  end
endif

dialog "Site visits", 0, 0, 250, 158
  control statictext "&Visits so far:", 9, 8, 6, 120, 9
  control listbox "", 10, 8, 17, 170, 116, "PickVisit"
  control button "&New...", 20, 186, 17, 56, 14, "NewVisit"
  control button "&Edit...", 21, 186, 35, 56, 14, "EditVisit"
  control cancelbutton "Close", 2, 186, 119, 56, 14
  control statictext "", 11, 8, 141, 234, 9
  oninit ShowList
enddialog

count = dbfnumrecords(Table)
x = dbfclose(Table)
print "Visits in "; TableName; ": "; int(count)
end


# ---- The list ----

sub ShowList(r)
  alter 10
    clear
  endalter
  total = dbfnumrecords(Table)
  for i = 0 to total - 1
    x = dbfseek(Table, i)
    record = dbfread(Table)
    entry = DayText(record[2]) + "  " + Trimmed(record[0])
    alter 10
      value entry
    endalter
  next
  summary = "" + int(total) + " visits"
  if total = 1 then
    summary = "1 visit"
  endif
  alter 11
    title summary
  endalter
  Chosen = -1
  alter 21
    enable 0
  endalter
  if r = 0 then
    alter window
      menuitem "Summary", "ShowSummary"
    endalter
  endif
endsub

sub PickVisit(entry)
  Chosen = controlvalue(10, "selection")
  alter 21
    enable 1
  endalter
endsub

sub NewVisit(v)
  Current = -1
  call EditSheet("New visit")
  call ShowList(1)
endsub

sub EditVisit(v)
  Current = Chosen
  call EditSheet("Visit " + int(Current + 1))
  call ShowList(1)
endsub

sub ShowSummary(caption)
  total = dbfnumrecords(Table)
  again = 0
  photos = 0
  for i = 0 to total - 1
    x = dbfseek(Table, i)
    record = dbfread(Table)
    if record[7] = "T" then
      photos = photos + 1
    endif
    if record[8] = "T" then
      again = again + 1
    endif
  next
  print int(total); " visits, "; int(photos); " with photos, "; int(again); " to be followed up"
endsub


# ---- One visit ----

sub EditSheet(heading)
  propertysheet heading, 0, 0, 226, 140
    page "Site"
      control statictext "&Site:", 100, 8, 10, 52, 9
      control edittext "", 101, 64, 8, 152, 13, "NameChanged"
      control statictext "&Kind:", 102, 8, 28, 52, 9
      control combobox "", 103, 64, 26, 90, 80
      control statictext "&Date:", 104, 8, 46, 52, 9
      control datetime "", 105, 64, 44, 90, 13
      control statictext "&Observer:", 106, 8, 64, 52, 9
      control edittext "", 107, 64, 62, 152, 13
      control statictext "&People seen:", 108, 8, 82, 52, 9
      control editnumber "", 109, 64, 80, 40, 13
      control groupbox "Weather", 110, 8, 100, 208, 30
      control radiogroup "Dr&y", 111, 18, 114, 56, 11
      control radiogroup "&Rain", 112, 84, 114, 56, 11
      control radiogroup "Sno&w", 113, 150, 114, 56, 11
      oninit FillSheet
      onexit StoreSheet
    endpage
    page "Findings"
      control checkbox "&Photos taken", 120, 8, 8, 100, 11
      control checkbox "To be &followed up", 121, 116, 8, 100, 11
      control statictext "&Condition:", 122, 8, 28, 52, 9
      control sliderhorz "", 123, 64, 24, 120, 18, "ConditionMoved"
      control statictext "", 124, 192, 28, 24, 9
      control statictext "&Notes:", 125, 8, 50, 52, 9
      control editmultiline "", 126, 8, 62, 208, 68
    endpage
  enddialog
endsub

sub FillSheet(r)
  for i = 0 to 3
    alter 103
      value Kinds[i]
    endalter
  next
  condition = 50
  weather = 111
  if Current => 0 then
    x = dbfseek(Table, Current)
    record = dbfread(Table)
    when = DayText(record[2]) + " " + Trimmed(record[3])
    condition = val(record[9])
    weather = 111 + instr("DRS", left(record[6], 1))
    name = Trimmed(record[0])
    kind = Trimmed(record[1])
    observer = Trimmed(record[4])
    people = Trimmed(record[5])
    notes = replace(Trimmed(record[10]), "|", LineFeed)
    alter 101
      text name
    endalter
    alter 103
      text kind
    endalter
    alter 105
      value when
    endalter
    alter 107
      text observer
    endalter
    alter 109
      text people
    endalter
    alter 126
      text notes
    endalter
    if record[7] = "T" then
      alter 120
        value 1
      endalter
    endif
    if record[8] = "T" then
      alter 121
        value 1
      endalter
    endif
  else
    alter 103
      selection 0
    endalter
  endif
  alter weather
    value 1
  endalter
  alter 123
    value condition
  endalter
  call ConditionMoved(condition)
endsub

# The sheet's heading follows the name of the site.
sub NameChanged(name)
  heading = "Visit: " + name
  alter window
    title heading
  endalter
endsub

sub ConditionMoved(place)
  shown = int(place)
  alter 124
    title shown
  endalter
endsub

# The controls can still be asked when the sheet has been closed by OK.
sub StoreSheet(result)
  if result != 1 then
    return
  endif
  name = controlvalue(101)
  if name = "" then
    print "A visit needs a site: nothing was stored."
    return
  endif
  when = controlvalue(105)
  weather = "Dry"
  if controlvalue(112) = 1 then
    weather = "Rain"
  endif
  if controlvalue(113) = 1 then
    weather = "Snow"
  endif
  day = replace(left(when, 10), "-", "")
  clock = mid(when, 11, 8)
  notes = replace(controlvalue(126), LineFeed, "|")
  people = str(controlvalue(109))
  condition = str(controlvalue(123))
  photos = YesNo(controlvalue(120))
  again = YesNo(controlvalue(121))
  kind = controlvalue(103)
  observer = controlvalue(107)
  if Current < 0 then
    stored = dbfappend(Table, name, kind, day, clock, observer, people, weather, photos, again, condition, notes)
  else
    stored = dbfwrite(Table, Current, name, kind, day, clock, observer, people, weather, photos, again, condition, notes)
  endif
  if stored != True then
    print "The visit could not be stored: is the disk full?"
  endif
endsub


# ---- The table ----

# A handle, below 0 when the table can neither be opened nor made.
function OpenTable()
  OpenTable = -1
  found = findfiles(TableName, "")
  if ubound("found") > 0 then
    handle = dbfopen(TableName)
    if handle < 0 then
      print TableName + " is there but cannot be opened as a table."
      return
    endif
    if dbfnumfields(handle) != 11 then
      print TableName + " is a table of something else."
      x = dbfclose(handle)
      return
    endif
    OpenTable = handle
    return
  endif
  dim site[3], kind[3], day[3], clock[3], observer[3], people[3], weather[3], photos[3], again[3], condition[3], notes[3]
  site[0] = "SITE"
  site[1] = "CHAR"
  site[2] = 40
  kind[0] = "KIND"
  kind[1] = "CHAR"
  kind[2] = 12
  day[0] = "DAY"
  day[1] = "DATE"
  day[2] = 8
  clock[0] = "CLOCK"
  clock[1] = "CHAR"
  clock[2] = 8
  observer[0] = "OBSERVER"
  observer[1] = "CHAR"
  observer[2] = 24
  people[0] = "PEOPLE"
  people[1] = "NUMERIC"
  people[2] = 18
  weather[0] = "WEATHER"
  weather[1] = "CHAR"
  weather[2] = 4
  photos[0] = "PHOTOS"
  photos[1] = "BOOL"
  photos[2] = 1
  again[0] = "AGAIN"
  again[1] = "BOOL"
  again[2] = 1
  condition[0] = "CONDITION"
  condition[1] = "NUMERIC"
  condition[2] = 18
  notes[0] = "NOTES"
  notes[1] = "CHAR"
  notes[2] = 200
  handle = dbfcreate(TableName, site, kind, day, clock, observer, people, weather, photos, again, condition, notes)
  if handle < 0 then
    print TableName + " cannot be made here."
  endif
  OpenTable = handle
endfunction

# 20260731 as 2026-07-31.
function DayText(day)
  DayText = left(day, 4) + "-" + mid(day, 4, 2) + "-" + mid(day, 6, 2)
endfunction

function YesNo(checked)
  YesNo = "F"
  if checked = 1 then
    YesNo = "T"
  endif
endfunction

# A field's text without the blanks around it.
function Trimmed(padded)
  result = padded
  do while left(result, 1) = " "
    result = mid(result, 1, len(result))
  loop
  do while right(result, 1) = " "
    result = left(result, len(result) - 1)
  loop
  Trimmed = result
endfunction
