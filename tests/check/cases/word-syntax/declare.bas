declare function f (a as integer)  # problem: word-syntax@20
