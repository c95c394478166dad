(BadExpression 2)
#1=
M30
