# The program tree.
tornvale_add_library(tornvale_items
  CodeManagerItem.cpp CodeManagerItem.h
  GenerateIsoCode.cpp GenerateIsoCode.h
  GenerationProgress.cpp GenerationProgress.h
  GroupClipboard.cpp
  GroupMenu.cpp
  IsoEditor.cpp IsoEditor.h
  IsoEditorForm.cpp IsoEditorForm.h
  IsoItem.cpp IsoItem.h
  IsoSourceEdit.cpp IsoSourceEdit.h
  ItemMaker.cpp ItemMaker.h
  ItemMenu.cpp
  ItemPlayback.cpp
  ItemState.h
  NumberInput.cpp NumberInput.h
  PlaybackText.cpp PlaybackText.h
  SourceFile.cpp SourceFile.h
  TreeGestures.cpp
  TreeMenu.cpp TreeMenu.h
  TreeOrder.cpp TreeOrder.h
  TreeSnapshot.cpp TreeSnapshot.h
  TreeWidgetManager.cpp TreeWidgetManager.h
  UserTopItem.cpp UserTopItem.h
  UserTopItemManager.cpp UserTopItemManager.h)
target_link_libraries(tornvale_items PUBLIC
  tornvale_items_calc tornvale_path tornvale_headertail tornvale_output tornvale_motion tornvale_nc)
