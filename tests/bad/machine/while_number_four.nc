(WhileOpen 2)
WHILE [1 EQ 1] DO4
M30
