# The post-processor: its configuration, the joining of chains and segments, and the text of the NC program.
tornvale_add_library(tornvale_output_calc
  calc/ChainJoin.cpp calc/ChainJoin.h
  calc/ChainPosition.cpp calc/ChainPosition.h
  calc/MotionPasses.cpp calc/MotionPasses.h
  calc/OutputText.cpp calc/OutputText.h
  calc/OutputWords.cpp calc/OutputWords.h
  calc/PostProcessorFile.cpp calc/PostProcessorFile.h
  calc/SegmentText.cpp calc/SegmentText.h
  calc/WordOrder.cpp calc/WordOrder.h)
target_link_libraries(tornvale_output_calc PUBLIC tornvale_nc_calc Qt5::Xml)

tornvale_add_library(tornvale_output
  OutputSegment.h
  PostProcessorConfigulation.cpp PostProcessorConfigulation.h
  UserPostProcessor.cpp UserPostProcessor.h UserPostProcessorPatterns.cpp)
target_link_libraries(tornvale_output PUBLIC tornvale_output_calc tornvale_planning tornvale_core Qt5::Widgets)
