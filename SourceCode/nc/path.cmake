# What the scene shows of program items: the path and the bodies that stand for them.
tornvale_add_library(tornvale_path_calc
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/calc/ControlPoints.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/calc/ControlPoints.h
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/calc/PathArrays.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/calc/PathArrays.h
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/calc/PathShapes.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/calc/PathShapes.h)
target_link_libraries(tornvale_path_calc PUBLIC tornvale_nc_calc tornvale_geometry_calc Coin::Coin)

tornvale_add_library(tornvale_path
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/PathLineSet.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/PathLineSet.h
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/PathShapeNodes.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/PathShapeNodes.h
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/ProgramItem.h
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/myDragger.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/myDragger.h
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/trajNode.cpp
  ${CMAKE_SOURCE_DIR}/SourceCode/nc/trajNode.h)
target_link_libraries(tornvale_path PUBLIC tornvale_path_calc tornvale_nodes tornvale_nc)
