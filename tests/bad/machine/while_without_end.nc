(WhileOpen 3)
#1=1
WHILE [#1 EQ 2] DO1
X1.
M30
