# What GPS receivers say: sentences of NMEA 0183, one a line, such as
#
#   $GPGGA,101500,4636.7500,N,00801.7580,E,1,08,1.1,1018.2,M,48.2,M,,*7C
#
# A library for other scripts: call PrepareNmea once, then TakeSentence for each
# line, and Field(n) and SentenceKind for what it says.

sub PrepareNmea()
  # What DecimalDegrees and SecondsOfDay answer to an empty field.
  global NoAngle, NoTime
  NoAngle = 999
  NoTime = -1

  # The sentence in hand, cut at its commas.
  global Fields[40], FieldCount, MaxFields
  MaxFields = 40
  FieldCount = 0

  # The language has no exclusive or and no character codes, so both become
  # tables: the place of a character among the printable ones gives its code,
  # and the exclusive or of two bytes is that of their two hexadecimal digits.
  global Printable, FirstCode, HexDigits, NibbleXor[256]
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

# True when the line is a whole sentence with the right checksum; its fields are
# then at hand. A sentence without a checksum may have lost its end.
function TakeSentence(sentence)
  TakeSentence = False
  star = instr(sentence, "*")
  if left(sentence, 1) = "$" then
    if star => 0 then
      body = mid(sentence, 1, star - 1)
      if Checksum(body) = ucase(mid(sentence, star + 1, 2)) then
        call SplitFields(body)
        TakeSentence = True
      endif
    endif
  endif
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

# "GGA" of GPGGA, GNGGA and so on, which differ only in the satellites they come
# from; a name that begins with "P" is a maker's own and may mean anything.
function SentenceKind()
  SentenceKind = ""
  name = Field(0)
  if len(name) = 5 then
    if left(name, 1) != "P" then
      SentenceKind = right(name, 3)
    endif
  endif
endfunction

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
function SecondsOfDay(packed)
  SecondsOfDay = NoTime
  if len(packed) => 6 then
    SecondsOfDay = val(left(packed, 2)) * 3600 + val(mid(packed, 2, 2)) * 60 + val(mid(packed, 4, 9))
  endif
endfunction

# 091230.50 gives 09:12:30.
function ClockText(packed)
  ClockText = ""
  if len(packed) => 6 then
    ClockText = left(packed, 2) + ":" + mid(packed, 2, 2) + ":" + mid(packed, 4, 2)
  endif
endfunction

# 170524 gives 20240517, the way tables write a day. Two digits of the year: the
# system started in 1980.
function DayText(packed)
  DayText = ""
  if len(packed) = 6 then
    century = "20"
    if val(right(packed, 2)) => 80 then
      century = "19"
    endif
    DayText = century + right(packed, 2) + mid(packed, 2, 2) + left(packed, 2)
  endif
endfunction
