# The installation data beside the executables. A rebuild, or installing over an older version, never loses
# what a user has changed there.
file(GLOB_RECURSE TORNVALE_DATA_FILES CONFIGURE_DEPENDS
     ${CMAKE_SOURCE_DIR}/installation/*)
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/installation.stamp
  COMMAND ${CMAKE_COMMAND}
          -DSOURCE=${CMAKE_SOURCE_DIR}/installation -DTARGET=${TORNVALE_APP_DIR}
          -DRECORD=${CMAKE_BINARY_DIR}/installation.sums
          -P ${CMAKE_SOURCE_DIR}/cmake/CopyInstallation.cmake
  COMMAND ${CMAKE_COMMAND} -E touch ${CMAKE_BINARY_DIR}/installation.stamp
  DEPENDS ${TORNVALE_DATA_FILES} ${CMAKE_SOURCE_DIR}/cmake/CopyInstallation.cmake
  COMMENT "Copying the installation data")
add_custom_target(tornvale_installation ALL DEPENDS ${CMAKE_BINARY_DIR}/installation.stamp)

foreach(tv_program Tornvale tornvale-batch)
  if(TARGET ${tv_program})
    install(TARGETS ${tv_program} RUNTIME DESTINATION .)
  endif()
endforeach()
install(CODE "
  set(SOURCE \"${CMAKE_SOURCE_DIR}/installation\")
  set(TARGET \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
  set(RECORD \"\${TARGET}/installation.sums\")
  include(\"${CMAKE_SOURCE_DIR}/cmake/CopyInstallation.cmake\")")
install(FILES LICENSE README.md CHANGELOG.md DESTINATION .)
