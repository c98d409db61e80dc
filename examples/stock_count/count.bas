# TOOLMENU=Stock count
#
# Compares a stock count with the stock list. Every article may have been
# counted on several shelves: the counts are added up, sorted by article, and
# each difference to the expected quantity is flagged.
#
# stock.csv   article;name;quantity     what should be there
# counted.csv shelf;article;quantity    what was counted
#
# Both are looked for in the current directory and then in the example's folder
# of the source tree. Empty lines and lines that begin with "#" are passed over.
# The report is stock_report.txt in the current directory.

global LineFeed, MaxArticles, Count, BadLines, BadText
LineFeed = format(10, "%c")
MaxArticles = 2000
Count = 0
BadLines = 0
BadText = ""

# One row for each article, in the order of first sight. The map finds the row
# of an article; Order holds the rows in the order of the report.
global Articles[2000], Names[2000], Expected[2000], Counted[2000], Order[2000]
map create "rows"

stockPath = FindFile("stock.csv")
countedPath = FindFile("counted.csv")
if stockPath = "" then
  print "stock.csv was not found."
  end
endif
if countedPath = "" then
  print "counted.csv was not found."
  end
endif

open stockPath for input as 1 text
do while iseof(1) = False
  call ReadStock(readline(1))
loop
close 1

open countedPath for input as 1 text
do while iseof(1) = False
  call ReadCounted(readline(1))
loop
close 1

call SortRows()
result = Table()

open "stock_report.txt" for output as 2 text
x = writeline(2, result)
close 2
print result;
end


# ---- Reading ----

function FindFile(name)
  FindFile = ""
  found = findfiles(name, "")
  if ubound("found") > 0 then
    FindFile = name
    return
  endif
  fallback = "examples/stock_count/" + name
  found = findfiles(fallback, "")
  if ubound("found") > 0 then
    FindFile = fallback
  endif
endfunction

# The part of a line between two ";" (0 is the first), without outer blanks.
function Part(record, number)
  rest = record
  for skip = 1 to number
    cut = instr(rest, ";")
    if cut < 0 then
      rest = ""
    else
      rest = mid(rest, cut + 1, len(rest))
    endif
  next
  cut = instr(rest, ";")
  if cut => 0 then
    rest = left(rest, cut)
  endif
  Part = Trim(rest)
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

function HasData(record)
  HasData = True
  if Trim(record) = "" then
    HasData = False
  endif
  if left(record, 1) = "#" then
    HasData = False
  endif
endfunction

# A quantity is digits only: val() alone would read "12x" as 12 and "no label"
# as 0.
function IsQuantity(words)
  IsQuantity = True
  if words = "" then
    IsQuantity = False
  endif
  for i = 0 to len(words) - 1
    if instr("0123456789", mid(words, i, 1)) < 0 then
      IsQuantity = False
    endif
  next
endfunction

sub ReadStock(record)
  if HasData(record) = False then
    return
  endif
  if IsQuantity(Part(record, 2)) = False then
    call NoteBadLine("stock", record)
    return
  endif
  row = RowOf(Part(record, 0), Part(record, 1))
  if row < 0 then
    call NoteBadLine("stock", record)
    return
  endif
  Expected[row] = Expected[row] + val(Part(record, 2))
endsub

sub ReadCounted(record)
  if HasData(record) = False then
    return
  endif
  if IsQuantity(Part(record, 2)) = False then
    call NoteBadLine("counted", record)
    return
  endif
  row = RowOf(Part(record, 1), "(not in the stock list)")
  if row < 0 then
    call NoteBadLine("counted", record)
    return
  endif
  Counted[row] = Counted[row] + val(Part(record, 2))
endsub

sub NoteBadLine(list, record)
  BadLines = BadLines + 1
  BadText = BadText + "  " + list + ": " + record + LineFeed
endsub

# The row of an article, made at first sight; -1 for a line without an article
# and when there is no row left. Map keys are case-sensitive, scanners and
# people are not.
function RowOf(article, name)
  key = ucase(article)
  RowOf = -1
  if key = "" then
    return
  endif
  if maphas("rows", key) = True then
    RowOf = mapget("rows", key)
    return
  endif
  if Count < MaxArticles then
    Articles[Count] = key
    Names[Count] = name
    Expected[Count] = 0
    Counted[Count] = 0
    RowOf = Count
    x = mapset("rows", key, Count)
    Count = Count + 1
  endif
endfunction


# ---- Sorting and the report ----

# Insertion sort of the row numbers, by article.
sub SortRows()
  for i = 0 to Count - 1
    key = Articles[i]
    gap = i
    do while SortsBehind(gap - 1, key) = True
      Order[gap] = Order[gap - 1]
      gap = gap - 1
    loop
    Order[gap] = i
  next
endsub

# Whether the row at a place of the order belongs behind the article. A
# condition is a single comparison, so the check of the place stands here.
function SortsBehind(place, article)
  SortsBehind = False
  if place => 0 then
    if Articles[Order[place]] > article then
      SortsBehind = True
    endif
  endif
endfunction

function Table()
  all = "Article  Name                      expected   counted  difference" + LineFeed
  different = 0
  for i = 0 to Count - 1
    row = Order[i]
    difference = Counted[row] - Expected[row]
    all = all + format(Articles[row], "%-9s") + format(Names[row], "%-24s")
    all = all + format(Expected[row], "%10.0f") + format(Counted[row], "%10.0f")
    if difference = 0 then
      all = all + LineFeed
    else
      different = different + 1
      all = all + format(difference, "%+12.0f  ***") + LineFeed
    endif
  next
  all = all + LineFeed
  all = all + format(Count, "%d articles, ") + format(different, "%d with a difference, ")
  all = all + format(BadLines, "%d lines not understood") + LineFeed
  Table = all + BadText
endfunction
