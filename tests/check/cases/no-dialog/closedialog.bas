closedialog  # problem: no-dialog@1
