# The machine as a tree, and what plays lines on it. Stands above the nodes.
tornvale_add_library(tornvale_motion
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/CollisionGroups.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/CollisionGroups.h
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/CollisionMarks.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/CollisionMarks.h
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/FixtureMounter.h
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/MachineNodes.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/MachineNodes.h
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/MotionNodeChains.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/MotionNodeManager.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/MotionNodeManager.h
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/MotionNodePrivate.h
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/MotionNodeTreeWidget.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/MotionNodeTreeWidget.h
  ${CMAKE_SOURCE_DIR}/SourceCode/machine/PlaybackStop.h
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/commandProcessor.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/commandProcessor.h
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/myTimer.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/myTimer.h)
target_link_libraries(tornvale_motion PUBLIC tornvale_nodes tornvale_toolmanager)
