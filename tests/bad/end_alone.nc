text 6
G0
(MORVA END 5)
