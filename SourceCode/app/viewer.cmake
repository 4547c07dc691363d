# What is drawn of the machine, and the window's 3D view.
tornvale_add_library(tornvale_viewer
  MachineScene.cpp MachineScene.h
  MachineViewer.cpp MachineViewer.h)
target_link_libraries(tornvale_viewer PUBLIC tornvale_motion SoQt::SoQt)
