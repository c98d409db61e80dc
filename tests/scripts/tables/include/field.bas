# One field for "dbfcreate".
function Field(name, word, length, decimals)
  dim f[4]
  f[0] = name
  f[1] = word
  f[2] = length
  f[3] = decimals
  Field = f
endfunction

# A value between bars, so that its blanks show.
function Bars(words)
  Bars = "|" + words + "|"
endfunction

# Every byte of a file that is not printable ASCII as <number>.
function Shown(path)
  open path as 200
  count = filesize(200)
  bytes = read(200, count, 1)
  close 200
  all = ""
  for i = 0 to count - 1
    byte = bytes[i]
    shape = "<%d>"
    if byte > 31 then
      shape = "%c"
    endif
    if byte > 126 then
      shape = "<%d>"
    endif
    all = all + format(byte, shape)
  next
  Shown = all
endfunction
