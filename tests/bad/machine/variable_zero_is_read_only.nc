(BadVariable 2)
#0=1
M30
