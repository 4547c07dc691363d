# What is drawn of the machine, and the window's 3D view.
tornvale_add_library(tornvale_viewer_calc
  calc/ViewFit.cpp calc/ViewFit.h)
target_link_libraries(tornvale_viewer_calc PUBLIC Coin::Coin)

tornvale_add_library(tornvale_viewer
  ClickableViewer.cpp ClickableViewer.h
  MachineScene.cpp MachineScene.h
  MachineViewer.cpp MachineViewer.h
  OffscreenRenderer.cpp OffscreenRenderer.h)
target_link_libraries(tornvale_viewer PUBLIC tornvale_viewer_calc tornvale_motion tornvale_path SoQt::SoQt)

find_package(OpenGL QUIET COMPONENTS EGL)
if(TARGET OpenGL::EGL)
  target_link_libraries(tornvale_viewer PRIVATE OpenGL::EGL)
  target_compile_definitions(tornvale_viewer PRIVATE TORNVALE_HAS_EGL)
endif()
