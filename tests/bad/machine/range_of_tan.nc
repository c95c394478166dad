(FunctionRange 2)
#1=TAN[90]
M30
