(FunctionRange 2)
#1=SQRT[-0.001]
M30
