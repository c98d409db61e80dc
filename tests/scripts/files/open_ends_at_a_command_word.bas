if 1 = 1 then open "data" as 1 text print readline(1) endif   # expect: one
