# The installation data beside the executables: copied whole, settings that a user changed included
# only at the first copy, so that a rebuild never loses them.
file(GLOB_RECURSE TORNVALE_DATA_FILES CONFIGURE_DEPENDS
     ${CMAKE_SOURCE_DIR}/installation/*)
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/installation.stamp
  COMMAND ${CMAKE_COMMAND}
          -DSOURCE=${CMAKE_SOURCE_DIR}/installation -DTARGET=${TORNVALE_APP_DIR}
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
install(DIRECTORY installation/ DESTINATION .)
install(FILES LICENSE README.md CHANGELOG.md DESTINATION .)
