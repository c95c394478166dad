(PocketWords 5, CompEntryShort 7, CompCorner 9, CompCorner 10, CompCorner 12)
G20 G90 S900 M3
G10 L12 P1 R.5
G0 X0. Y0. Z.1
G150 G41 D1 P10 Z-.1 R.1 I.2 F10.
M30
N10 G1 X.2
Y.2
X-.2
Y-.2
X.2
Y0.
M99
