(nothing)
G20 G90
G0 X1. Y1. Z1.
M30
