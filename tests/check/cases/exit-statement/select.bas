x = 1
select case x  # problem: exit-statement@1
