WARNING: % delimiters not found; RS-232 transfer wrapper can add them automatically.
O1000
G90 G40 G49 G80
G83 X1. Z-1. R.1 Q0.1 F5.
G84 Z-1. F20.
M30
