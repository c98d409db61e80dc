# Many small calls with text and number parameters.
n = 5000000   # size
global Notes
Notes = 0
total = 0
kind = "add"
for i = 1 to n
  total = total + weight(kind, i, 3)
  call note(kind, 2)
  kind = other(kind)
next
print format(total, "%.0f"); " "; format(Notes, "%.0f"); " "; kind
end

function weight(name, amount, factor)
  if name = "add" then
    weight = amount * factor
  else
    weight = amount - factor
  endif
endfunction

function other(name)
  if name = "add" then
    other = "take"
  else
    other = "add"
  endif
endfunction

sub note(name, amount)
  if name = "take" then
    Notes = Notes + amount
  endif
endsub
