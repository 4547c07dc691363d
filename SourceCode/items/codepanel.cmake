# NC text beside the 3D scene: lines, search and colours of a program of a million lines.
tornvale_add_library(tornvale_codepanel_calc
  calc/CodeLines.cpp calc/CodeLines.h
  calc/CodeSearch.cpp calc/CodeSearch.h
  calc/CodeWords.cpp calc/CodeWords.h
  calc/ModalLine.cpp calc/ModalLine.h)
target_link_libraries(tornvale_codepanel_calc PUBLIC Qt5::Core)

tornvale_add_library(tornvale_codepanel
  CodeDelegate.cpp CodeDelegate.h
  CodeModel.cpp CodeModel.h
  CodePanel.cpp CodePanel.h
  CodeSearchBar.cpp CodeSearchBar.h
  CodeView.cpp CodeView.h)
target_link_libraries(tornvale_codepanel PUBLIC tornvale_codepanel_calc tornvale_core Qt5::Widgets)
