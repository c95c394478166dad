(WhileOpen 2)
WHILE [1 EQ 1]
M30
