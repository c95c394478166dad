(ArcRadiusSmall 4)
S900 M3
G0 X0. Y0. Z0.
G2 X3. R0. F10.
M30
