ERROR: Canned cycle present but G80 cancel was not found.
%
O1000
G90 G40 G49 
G83 X1. Z-1. R.1 Q0.1 F5.
G84 Z-1. F20.
M30
%
