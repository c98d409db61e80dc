run "script_that_runs_itself_reports_50.bas"
# expect error 50 anywhere: Brindle unrecoverable error
