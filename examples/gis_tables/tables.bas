# TOOLMENU=Tables of a map
#
# Looks through the dBase tables of a folder, such as GIS programs keep beside
# their maps: lists the fields of each, joins two of them, adds up a number,
# and writes the result as a new table.
#
# The tables: those of the current directory if there are any, else the ones
# that come with this example. The result: summary.dbf in the current directory.
#
# Two tables belong together when one has a field like STATE_NAME and the other
# is called STATES.DBF and has a field NAME. For every record of the second one
# the records of the first that name it are counted, and their first number is
# added up.

global LineFeed, ResultName
LineFeed = format(10, "%c")
ResultName = "summary.dbf"

# The tables: their files, names, and what dbfopen gave for them. Their fields stand
# one behind the other in the arrays below, from FirstField on.
global TableCount, MaxTables, Files[100], TableNames[100], Handles[100], FirstField[100], FieldCounts[100]
TableCount = 0
MaxTables = 100
global AllFields, MaxFields, FieldNames[4000], FieldTypes[4000], FieldLengths[4000], FieldDecimals[4000]
AllFields = 0
MaxFields = 4000

# Where the records of the table in hand are in its file.
global HeaderLength, RecordLength
HeaderLength = 0
RecordLength = 0

# The two tables to join, and their fields by number within the table.
global Many, ManyKey, ManyNumber, One, OneKey, OneNumber
Many = -1

# One row for each record of the second table; the map finds it by its name.
global RowCount, MaxRows, RowNames[4000], RowNumbers[4000], RowCounts[4000], RowSums[4000]
RowCount = 0
MaxRows = 4000
map create "rows"

folder = FindFolder()
call OpenTables(folder)
if TableCount = 0 then
  print "There are no tables here."
  end
endif
call ListTables()
call FindJoin()
if Many < 0 then
  print "No table names the records of another one."
  end
endif
call ReadOne()
strangers = ReadMany()
call ShowSums(strangers)
call WriteResult()
end


# ---- Finding and listing ----

# The part of a path before the file's name.
function FindFolder()
  FindFolder = ""
  found = findfiles("*.dbf", "")
  count = ubound("found")
  # A result of an earlier run is not a table to look through.
  if count = 1 then
    if lcase(found) = ResultName then
      count = 0
    endif
  endif
  if count = 0 then
    FindFolder = "examples/gis_tables/"
  endif
endfunction

sub OpenTables(folder)
  pattern = folder + "*.dbf"
  found = findfiles(pattern, "")
  count = ubound("found")
  if count = 0 then
    return
  endif
  for i = 0 to count - 1
    if lcase(found[i]) <> ResultName then
      call OpenTable(folder, found[i])
    endif
  next
endsub

sub OpenTable(folder, name)
  path = folder + name
  handle = dbfopen(path)
  if handle < 0 then
    shown = name + " is no table that can be read." + LineFeed
    print shown
    return
  endif
  count = dbfnumfields(handle)
  if TableCount = MaxTables then
    x = dbfclose(handle)
    return
  endif
  if AllFields + count > MaxFields then
    x = dbfclose(handle)
    return
  endif
  Files[TableCount] = path
  TableNames[TableCount] = name
  Handles[TableCount] = handle
  FirstField[TableCount] = AllFields
  FieldCounts[TableCount] = count
  TableCount = TableCount + 1
  if count > 0 then
    call ReadFields(path, handle, count)
  endif
endsub

# The functions for tables give the names of the fields; types and lengths are
# read from the header itself: 32 bytes, and then 32 for each field.
sub ReadFields(path, handle, count)
  names = dbffieldnames(handle)
  open path as 1
  for i = 0 to count - 1
    x = seek(1, 32 + 32 * i)
    bytes = read(1, 32, 1)
    FieldNames[AllFields] = names[i]
    FieldTypes[AllFields] = format(bytes[11], "%c")
    FieldLengths[AllFields] = bytes[16]
    FieldDecimals[AllFields] = bytes[17]
    AllFields = AllFields + 1
  next
  close 1
endsub

sub ListTables()
  for t = 0 to TableCount - 1
    shown = TableNames[t] + ": " + format(dbfnumrecords(Handles[t]), "%d records of ")
    shown = shown + format(FieldCounts[t], "%d fields")
    print shown
    if FieldCounts[t] > 0 then
      for f = FirstField[t] to FirstField[t] + FieldCounts[t] - 1
        shown = format(FieldNames[f], "  %-12s") + format(FieldTypes[f], "%s") + format(FieldLengths[f], "%5d")
        if FieldDecimals[f] > 0 then
          shown = shown + format(FieldDecimals[f], ", %d decimals")
        endif
        print shown
      next
    endif
    print ""
  next
endsub


# ---- What belongs together ----

sub FindJoin()
  for t = 0 to TableCount - 1
    for f = 0 to FieldCounts[t] - 1
      if Many < 0 then
        call TryJoin(t, f)
      endif
    next
  next
endsub

# Joins at field f of table t when it is like STATE_NAME and all else is there.
sub TryJoin(t, f)
  name = ucase(FieldNames[FirstField[t] + f])
  if right(name, 5) <> "_NAME" then
    return
  endif
  number = FindNumber(t)
  if number < 0 then
    return
  endif
  partner = FindTable(left(name, len(name) - 5) + "S.DBF")
  if partner < 0 then
    return
  endif
  key = FindField(partner, "NAME")
  if key < 0 then
    return
  endif
  Many = t
  ManyKey = f
  ManyNumber = number
  One = partner
  OneKey = key
  OneNumber = FindNumber(partner)
endsub

function FindTable(name)
  FindTable = -1
  for t = 0 to TableCount - 1
    if ucase(TableNames[t]) = name then
      FindTable = t
    endif
  next
endfunction

function FindField(t, name)
  FindField = -1
  for f = 0 to FieldCounts[t] - 1
    if ucase(FieldNames[FirstField[t] + f]) = name then
      FindField = f
    endif
  next
endfunction

# The first field of a table that holds numbers, -1 when there is none.
function FindNumber(t)
  FindNumber = -1
  for f = 0 to FieldCounts[t] - 1
    if FindNumber < 0 then
      if instr("NF", FieldTypes[FirstField[t] + f]) => 0 then
        FindNumber = f
      endif
    endif
  next
endfunction


# ---- Reading ----

# Goes to the first record of a table. Its file is opened as number 1 as well:
# only the file itself shows which records are marked as deleted.
sub StartReading(t)
  x = dbfseek(Handles[t], 0)
  open Files[t] as 1
  x = seek(1, 8)
  lengths = read(1, 2, 2)
  HeaderLength = lengths[0]
  RecordLength = lengths[1]
endsub

function IsDeleted(record)
  IsDeleted = False
  x = seek(1, HeaderLength + record * RecordLength)
  flag = read(1, 1, 1)
  if flag = 42 then
    IsDeleted = True
  endif
endfunction

function Trim(words)
  do while left(words, 1) = " "
    words = mid(words, 1, len(words))
  loop
  do while right(words, 1) = " "
    words = left(words, len(words) - 1)
  loop
  Trim = words
endfunction

sub ReadOne()
  call StartReading(One)
  count = dbfnumrecords(Handles[One])
  if count > 0 then
    for r = 0 to count - 1
      record = dbfread(Handles[One])
      if IsDeleted(r) = False then
        call AddRow(record)
      endif
    next
  endif
  close 1
endsub

sub AddRow(record)
  name = Trim(record[OneKey])
  if maphas("rows", name) = True then
    return
  endif
  if RowCount = MaxRows then
    return
  endif
  x = mapset("rows", name, RowCount)
  RowNames[RowCount] = name
  RowCounts[RowCount] = 0
  RowSums[RowCount] = 0
  RowNumbers[RowCount] = 0
  if OneNumber => 0 then
    RowNumbers[RowCount] = val(record[OneNumber])
  endif
  RowCount = RowCount + 1
endsub

# Adds the records of the first table to their rows; how many had none.
function ReadMany()
  strangers = 0
  call StartReading(Many)
  count = dbfnumrecords(Handles[Many])
  if count > 0 then
    for r = 0 to count - 1
      record = dbfread(Handles[Many])
      if IsDeleted(r) = False then
        name = Trim(record[ManyKey])
        if maphas("rows", name) = True then
          row = mapget("rows", name)
          RowCounts[row] = RowCounts[row] + 1
          RowSums[row] = RowSums[row] + val(record[ManyNumber])
        else
          strangers = strangers + 1
        endif
      endif
    next
  endif
  close 1
  ReadMany = strangers
endfunction


# ---- The result ----

function NameOf(t, f)
  NameOf = FieldNames[FirstField[t] + f]
endfunction

# A number with the decimals of a field.
function Decimals(t, f, number)
  shape = format(FieldDecimals[FirstField[t] + f], "%%.%df")
  Decimals = format(number, shape)
endfunction

sub ShowSums(strangers)
  shown = TableNames[Many] + ", " + NameOf(Many, ManyKey) + " = " + TableNames[One] + ", NAME"
  print shown
  heading = format(NameOf(One, OneKey), "%-28s") + format("RECORDS", "%8s") + format(NameOf(Many, ManyNumber), "%16s")
  if OneNumber => 0 then
    heading = heading + format(NameOf(One, OneNumber), "%14s")
  endif
  print heading
  records = 0
  sum = 0
  if RowCount > 0 then
    for i = 0 to RowCount - 1
      shown = format(RowNames[i], "%-28s") + format(RowCounts[i], "%8d")
      shown = shown + format(Decimals(Many, ManyNumber, RowSums[i]), "%16s")
      if OneNumber => 0 then
        shown = shown + format(Decimals(One, OneNumber, RowNumbers[i]), "%14s")
      endif
      print shown
      records = records + RowCounts[i]
      sum = sum + RowSums[i]
    next
  endif
  shown = format("together", "%-28s") + format(records, "%8d") + format(Decimals(Many, ManyNumber, sum), "%16s")
  print shown
  if strangers > 0 then
    shown = format(strangers, "without a partner: %d")
    print shown
  endif
  print ""
endsub

# A description of a field as dbfcreate takes it.
function Field(name, word, length, decimals)
  dim parts[4]
  parts[0] = name
  parts[1] = word
  parts[2] = length
  parts[3] = decimals
  Field = parts
endfunction

sub WriteResult()
  length = FieldLengths[FirstField[One] + OneKey]
  decimals = FieldDecimals[FirstField[Many] + ManyNumber]
  name = Field("NAME", "C", length, 0)
  records = Field("RECORDS", "N", 0, 0)
  total = Field(NameOf(Many, ManyNumber), "N", 0, decimals)
  if OneNumber => 0 then
    decimals = FieldDecimals[FirstField[One] + OneNumber]
    measure = Field(NameOf(One, OneNumber), "N", 0, decimals)
    h = dbfcreate(ResultName, name, records, total, measure)
  else
    h = dbfcreate(ResultName, name, records, total)
  endif
  if h < 0 then
    shown = ResultName + " could not be written."
    print shown
    return
  endif
  if RowCount > 0 then
    for i = 0 to RowCount - 1
      count = format(RowCounts[i], "%d")
      sum = Decimals(Many, ManyNumber, RowSums[i])
      if OneNumber => 0 then
        x = dbfappend(h, RowNames[i], count, sum, Decimals(One, OneNumber, RowNumbers[i]))
      else
        x = dbfappend(h, RowNames[i], count, sum)
      endif
    next
  endif
  shown = ResultName + format(dbfnumrecords(h), ": %d records")
  x = dbfclose(h)
  print shown
endsub
