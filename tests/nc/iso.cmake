# Tests of the ISO conversion, paths relative to tests/nc.
set(TORNVALE_NC_ISO_TESTS
  GCodeConverterTest.cpp
  IsoArcTest.cpp
  IsoInclinedPlaneTest.cpp
  IsoInterpreterTest.cpp
  IsoLineTest.cpp
  IsoPathTest.cpp
  IsoPlacementTest.cpp
  IsoPropertyTest.cpp)
