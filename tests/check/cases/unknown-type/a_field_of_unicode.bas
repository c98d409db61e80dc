type T
  s as unicode  # problem: unknown-type@8
endtype
