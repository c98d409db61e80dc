then
to
endif
endfunction
endsub
enddialog
endtype
endalter
page
endpage
print "on"          # expect: on
