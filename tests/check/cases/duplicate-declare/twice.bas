declare function f lib "nowhere" (byval a as integer) as integer
declare function f lib "nowhere" (byval a as integer) as integer  # problem: duplicate-declare@1
