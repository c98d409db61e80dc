global Rate
Rate = 1
call use(2)
print Rate
end
sub use(Rate)  # problem: parameter-global@9
endsub
