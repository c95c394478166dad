(BadExpression 2)
#1=[1+[2*3]
M30
