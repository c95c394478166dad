(PocketWords 4, PocketWords 5, ProgramMissing 6, PocketWords 7, BehindEnd 9)
G20 G90 S900 M3
G0 X0. Y0. Z.1
G150 X0. Y0. Z-.1 R.1 F10.
G150 P10 X0. Y0. R.1
G150 P77 X0. Y0. Z-.1 R.1
G150 P10 X0. Y0. Z-1. R.1 Q.0001
M30
N10 G1 X1.
M99
