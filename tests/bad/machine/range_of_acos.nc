(FunctionRange 2)
#1=ACOS[-1.001]
M30
