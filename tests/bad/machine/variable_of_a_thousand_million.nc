(BadVariable 2)
#1000000000=1
M30
