# g++ 12 loses the rounding to single precision of neighbouring double -> float -> double conversions when
# this pass packs them; the machine's kinematics rely on that rounding.
set(TORNVALE_EXACT_FLOATS $<$<CXX_COMPILER_ID:GNU>:-fno-tree-slp-vectorize>)

add_library(tornvale_warnings INTERFACE)
target_compile_options(tornvale_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Wold-style-cast -Woverloaded-virtual -Werror
  $<$<CXX_COMPILER_ID:Clang>:-Wno-unknown-warning-option>)

# tornvale_add_library(NAME sources... ): one room of one folder. Include paths start at SourceCode.
function(tornvale_add_library name)
  add_library(${name} STATIC ${ARGN})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/SourceCode)
  target_compile_definitions(${name} PUBLIC
    QT_NO_KEYWORDS QT_MESSAGELOGCONTEXT QT_DISABLE_DEPRECATED_BEFORE=0x050f00)
  target_link_libraries(${name} PRIVATE tornvale_warnings)
  target_compile_options(${name} PRIVATE ${TORNVALE_EXACT_FLOATS})
endfunction()

# Leaks inside libraries are not ours to mend.
set(TORNVALE_LSAN_OPTIONS "suppressions=${CMAKE_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0")

# tornvale_add_test(NAME sources... ): one test program; its tests are found when ctest starts.
function(tornvale_add_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE tornvale_warnings tornvale_test_support)
  target_compile_options(${name} PRIVATE ${TORNVALE_EXACT_FLOATS})
  set(tv_suppressions "")
  if(TORNVALE_SANITIZE)
    # A property of its own: a list in ENVIRONMENT does not survive the discovery of the tests.
    set(tv_suppressions ENVIRONMENT_MODIFICATION "LSAN_OPTIONS=set:${TORNVALE_LSAN_OPTIONS}")
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 240 ENVIRONMENT "QT_QPA_PLATFORM=offscreen" ${tv_suppressions})
endfunction()
