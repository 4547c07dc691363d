# Joining the items of a chain into one program, paths relative to SourceCode/nc. Stands above the tools.
tornvale_add_library(tornvale_planning_calc
  calc/AxisSequences.h
  calc/AxisWords.cpp calc/AxisWords.h
  calc/ChainPlanner.cpp calc/ChainPlanner.h
  calc/PlanItem.h
  calc/ProgramText.cpp calc/ProgramText.h
  calc/SpindleModel.cpp calc/SpindleModel.h)
target_link_libraries(tornvale_planning_calc PUBLIC tornvale_nc_calc tornvale_tools_calc)

# The parallel algorithms of the standard library run on this library's threads. Without it they are plain
# loops, and its headers must not be used either.
find_package(TBB QUIET)
if(TARGET TBB::tbb)
  target_link_libraries(tornvale_planning_calc PRIVATE TBB::tbb)
  target_compile_definitions(tornvale_planning_calc INTERFACE TORNVALE_COUNTS_IN_PARALLEL=1)
else()
  set_source_files_properties(calc/ProgramText.cpp PROPERTIES
    COMPILE_DEFINITIONS _GLIBCXX_USE_TBB_PAR_BACKEND=0)
endif()

tornvale_add_library(tornvale_planning
  itemStruct.h
  machineStatePreprocessing.cpp machineStatePreprocessing.h
  ProgramItem.h)
target_link_libraries(tornvale_planning PUBLIC tornvale_planning_calc tornvale_nc tornvale_tools)
