; The front edge of the door leaf is sawn to size, along X
; Door leaf on risers: X 0 to 1200, Y 0 to 600, Z 0 to 44
; Tool: saw blade 250 x 3.2, length 60, on spindle T2, upright: the programmed A is 90
N10 G90 G17
N20 G0 X-150 Y0 Z490 C0 A90
N30 M13 S6000
; Down beside the leaf, 6 below its lower face
N40 G0 Z119
N50 G1 X1350 F9000
N60 G0 Z490
N70 M15
N80 M5
