(NotFollowed 4, NotFollowed 6, PocketWords 6)
G20 G90 S900 M3
G0 X0. Y0. Z.1
G150 P10 X0. Y0. Z-.1 R.1 F10.
M30
N10 G150 P10 X0. Y0. Z-.1
G1 X1.
M99
