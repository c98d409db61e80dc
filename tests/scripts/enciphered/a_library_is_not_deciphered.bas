library "lib.bas"
goto there  # expect error 7: Duplicate label
end
