# The editor of header and tail positions, and the line edit with a history.
tornvale_add_library(tornvale_headertail
  AxisPositionForm.cpp AxisPositionForm.h
  HeaderTailEditor.cpp HeaderTailEditor.h
  HistoryLineEdit.cpp HistoryLineEdit.h)
target_link_libraries(tornvale_headertail PUBLIC
  tornvale_nc_calc tornvale_machine tornvale_core Qt5::Widgets)
