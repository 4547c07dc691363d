# Sources of the ISO conversion, paths relative to SourceCode/nc.
set(TORNVALE_NC_ISO_CALC_SOURCES
  calc/ArcPoints.cpp calc/ArcPoints.h
  calc/FeedRuns.cpp calc/FeedRuns.h
  calc/IsoInclinedPlane.cpp calc/IsoInclinedPlane.h
  calc/IsoInterpreter.cpp calc/IsoInterpreter.h calc/IsoInterpreterMotion.cpp
  calc/IsoLetters.cpp calc/IsoLetters.h
  calc/IsoLine.cpp calc/IsoLine.h
  calc/IsoPlacement.cpp calc/IsoPlacement.h
  calc/PathSplit.cpp calc/PathSplit.h
  calc/RotationSubdivision.cpp calc/RotationSubdivision.h)
set(TORNVALE_NC_ISO_SOURCES
  GCodeConversionStrategy.cpp GCodeConversionStrategy.h)
