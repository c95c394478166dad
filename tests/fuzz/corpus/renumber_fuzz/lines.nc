%
O1000
  G1 X1
n5g1
NOTEN 5 G1
(C)
  (D)
N15
	
;x
:1