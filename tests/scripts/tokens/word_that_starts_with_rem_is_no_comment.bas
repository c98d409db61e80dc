remark = 5
print remark        # expect: 5.000000
