(DivisionByZero 2)
#1=5 MOD 0
M30
