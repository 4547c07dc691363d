# The user's manual: the chapters in docs/manual become userManual/userManual.docx in the application folder.
set(TORNVALE_MANUAL_DIR ${CMAKE_SOURCE_DIR}/docs/manual)
set(TORNVALE_MANUAL_CHAPTERS
  01-first-steps.md
  02-main-window.md
  03-machine.md
  04-tools.md
  05-programs.md
  06-playback.md
  07-job.md
  08-packages.md
  09-settings.md
  10-batch.md
  11-messages.md)
set(TORNVALE_MANUAL ${TORNVALE_APP_DIR}/userManual/userManual.docx)

find_program(PANDOC_PROGRAM pandoc)
if(NOT PANDOC_PROGRAM)
  message(WARNING "pandoc is missing, so the user's manual is not made and the menu entry has nothing to show. "
                  "scripts/install-packages.sh build installs it.")
  return()
endif()

file(GLOB tv_manual_pictures CONFIGURE_DEPENDS ${TORNVALE_MANUAL_DIR}/pictures/*.png)
list(TRANSFORM TORNVALE_MANUAL_CHAPTERS PREPEND ${TORNVALE_MANUAL_DIR}/ OUTPUT_VARIABLE tv_manual_files)
add_custom_command(
  OUTPUT ${TORNVALE_MANUAL}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${TORNVALE_APP_DIR}/userManual
  COMMAND ${PANDOC_PROGRAM} --from markdown --to docx --toc --toc-depth=2 --number-sections
          --resource-path ${TORNVALE_MANUAL_DIR} --metadata-file ${TORNVALE_MANUAL_DIR}/metadata.yaml
          --metadata "date=Version ${PROJECT_VERSION}" --output ${TORNVALE_MANUAL} ${tv_manual_files}
  DEPENDS ${tv_manual_files} ${tv_manual_pictures} ${TORNVALE_MANUAL_DIR}/metadata.yaml
  COMMENT "Making the user's manual"
  VERBATIM)
add_custom_target(tornvale_manual ALL DEPENDS ${TORNVALE_MANUAL})
add_dependencies(tornvale_installation tornvale_manual)
install(FILES ${TORNVALE_MANUAL} DESTINATION userManual)
