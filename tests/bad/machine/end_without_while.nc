(WhileOpen 2)
END1
M30
