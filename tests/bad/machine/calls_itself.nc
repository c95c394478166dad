(CallsItself 3)
O0001
M98 P1
M30
