(LabelMissing 3)
G0 X1. Y1. Z1.
GOTO 99
M30
