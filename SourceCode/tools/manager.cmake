# The tool library window and the tool editor.
set(TORNVALE_TOOLS_MANAGER_CALC
  calc/ToolContours.cpp calc/ToolContours.h
  calc/ToolSorting.cpp calc/ToolSorting.h
  calc/ToolTextTable.cpp calc/ToolTextTable.h)
target_sources(tornvale_tools_calc PRIVATE ${TORNVALE_TOOLS_MANAGER_CALC})

tornvale_add_library(tornvale_toolmanager
  CheckRpmReverse.cpp CheckRpmReverse.h
  GetToolWidget.cpp GetToolWidget.h
  ToolContourPicture.cpp ToolContourPicture.h
  ToolEditor.cpp ToolEditor.h
  ToolEditorForm.cpp ToolEditorForm.h
  ToolManager.cpp ToolManager.h ToolManagerWindow.cpp
  ToolObserver.h
  ToolPreviewer.cpp ToolPreviewer.h
  ToolSceneView.cpp ToolSceneView.h
  ToolTree.cpp ToolTree.h
  ViewerLibrary.cpp ViewerLibrary.h)
target_link_libraries(tornvale_toolmanager PUBLIC tornvale_tools SoQt::SoQt Qt5::Widgets)
