(LabelMissing 2)
GOTO [0-5]
M30
