(DivisionByZero 2)
#1=1/[2-2]
M30
