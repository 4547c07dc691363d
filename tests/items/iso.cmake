# Records and texts of ISO programs, the ISO item and its editor.
tornvale_add_test(tornvale_isorecord_tests
  IsoProblemTest.cpp
  IsoRecordTest.cpp
  ItemRecordTest.cpp
  SourceTextTest.cpp)
target_link_libraries(tornvale_isorecord_tests PRIVATE tornvale_items_calc)

tornvale_add_test(tornvale_isoitem_tests
  IsoBench.cpp IsoBench.h
  IsoEditorTest.cpp
  IsoItemTest.cpp
  IsoSourceEditTest.cpp
  NumberInputTest.cpp
  ../geometry/GeometryTestSupport.cpp ../geometry/GeometryTestSupport.h
  ../nodes/NodesTestSupport.cpp ../nodes/NodesTestSupport.h
  ${TORNVALE_RESOURCES})
target_link_libraries(tornvale_isoitem_tests PRIVATE tornvale_items Qt5::Test)
