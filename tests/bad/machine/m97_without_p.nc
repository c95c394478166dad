(LabelMissing 2)
M97
M30
