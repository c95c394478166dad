(ProgramMissing 3)
G0 X1. Y1. Z1.
M98 P500
M30
