(ProgramAlarm 3)
#1=3
#3000=#1 (STOP HERE)
M30
