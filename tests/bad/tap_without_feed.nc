ERROR: G84 tapping is present but no feed F address was found.
%
O1000
G90 G40 G49 G80
G83 X1. Z-1. R.1 Q0.1 (F5.)
G84 Z-1. F.5
M30
%
