declare function len lib "nowhere" (byval a as integer) as integer  # problem: duplicate-declare@1
