WARNING: G83 is present but no Q peck address was found.
%
O1000
G90 G40 G49 G80
G83 X1. Z-1. R.1 Q.1 F5.
G84 Z-1. F20.
M30
%
