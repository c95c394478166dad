(FunctionRange 2)
#1=ASIN[1.001]
M30
