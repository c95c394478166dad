(LabelMissing 2)
M97 P99
M30
