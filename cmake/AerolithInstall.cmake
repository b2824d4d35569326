# SPDX-FileCopyrightText: Aerolith developers
# What is installed beside the programs, and the packages made of it: the component "window" is the
# package aerolith, "companion" is aerolith-cli. What both programs share goes with the companion,
# which can be installed alone.
find_program(GZIP_PROGRAM gzip REQUIRED)
find_program(CMARK_PROGRAM cmark-gfm REQUIRED)
file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/share")

# Compressed without a time stamp, so that the same sources give the same package.
function(aerolith_install_compressed source name program folder)
  set(compressed "${PROJECT_BINARY_DIR}/share/${program}/${name}")
  cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY "${PROJECT_SOURCE_DIR}")
  file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/share/${program}")
  add_custom_command(OUTPUT "${compressed}"
    COMMAND sh -c "\"$0\" -9nc \"$1\" > \"$2\""
      "${GZIP_PROGRAM}" "${source}" "${compressed}"
    DEPENDS "${source}" VERBATIM)
  add_custom_target(compressed_${program}_${name} DEPENDS "${compressed}")
  # The program alone can be installed too.
  add_dependencies(${program} compressed_${program}_${name})
  install(FILES "${compressed}" DESTINATION ${folder})
endfunction()

# What each package has of its own.
function(aerolith_install_notices program)
  cmake_path(REPLACE_FILENAME CMAKE_INSTALL_DOCDIR ${program} OUTPUT_VARIABLE folder)
  install(FILES share/copyright DESTINATION ${folder})
  aerolith_install_compressed(share/changelog changelog.gz ${program} ${folder})
  install(FILES share/lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${program})
endfunction()

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME window)
aerolith_install_notices(aerolith)
aerolith_install_compressed(share/man/aerolith.1 aerolith.1.gz aerolith ${CMAKE_INSTALL_MANDIR}/man1)
install(DIRECTORY share/icons/hicolor DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
install(FILES share/applications/org.kavrund.Aerolith.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES share/metainfo/org.kavrund.Aerolith.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES share/mime/packages/org.kavrund.Aerolith.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME companion)
aerolith_install_notices(aerolith-cli)
aerolith_install_compressed("${PROJECT_BINARY_DIR}/share/aerolith-cli.1" aerolith-cli.1.gz
  aerolith-cli ${CMAKE_INSTALL_MANDIR}/man1)
add_dependencies(compressed_aerolith-cli_aerolith-cli.1.gz document_manual)
install(DIRECTORY samples docs/old DESTINATION ${CMAKE_INSTALL_DATADIR}/aerolith)
# Where each shell looks for the completions of packages.
install(FILES "${PROJECT_BINARY_DIR}/share/aerolith-cli.bash"
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME aerolith-cli)
install(FILES "${PROJECT_BINARY_DIR}/share/_aerolith-cli"
  DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(FILES "${PROJECT_BINARY_DIR}/share/aerolith-cli.fish"
  DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

# One folder for the documents, whichever package they come with.
set(documents user-guide tables-to-ribs file-formats measures fit ribs pictures options scripts scale
  glossary)
list(TRANSFORM documents PREPEND docs/ OUTPUT_VARIABLE document_sources)
list(TRANSFORM document_sources APPEND .md)
install(FILES ${document_sources} docs/spline_file.py DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES docs/images/template.png docs/images/symmetric.png docs/images/nose.png
  docs/images/measures-section.svg docs/images/measures-nose.svg docs/images/measures-tail.svg
  docs/images/measures-mouth.svg docs/images/thickness.svg
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/images)
install(FILES docs/schemas/check.json docs/schemas/compare.json docs/schemas/convert.json
  docs/schemas/draw.json docs/schemas/fit.json docs/schemas/measure.json
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/schemas)

# The same documents as pages. Links between them lead to the pages.
set(pages)
foreach(document IN LISTS documents)
  set(page "${PROJECT_BINARY_DIR}/share/${document}.html")
  add_custom_command(OUTPUT "${page}"
    COMMAND sh -c "{ sed \"s/<title>Aerolith/&: $(sed -n '1s/^# //p' \"$2\")/\" \"$1\" && \"$0\" -e table \"$2\" | sed -E 's/(href=\"[a-z-]+)\\.md\"/\\1.html\"/g' && echo '</body></html>'; } > \"$3\""
      "${CMARK_PROGRAM}" "${PROJECT_SOURCE_DIR}/share/page_head.html"
      "${PROJECT_SOURCE_DIR}/docs/${document}.md" "${page}"
    DEPENDS "${PROJECT_SOURCE_DIR}/docs/${document}.md"
      "${PROJECT_SOURCE_DIR}/share/page_head.html" VERBATIM)
  list(APPEND pages "${page}")
endforeach()
add_custom_target(document_pages DEPENDS ${pages})
add_dependencies(aerolith-cli document_pages)
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}")
set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_CURRENT_LIST_DIR}/AerolithPackage.cmake")
set(CPACK_PACKAGE_VENDOR "Aerolith developers")
set(CPACK_PACKAGE_CONTACT "Aerolith developers <aerolith@localhost>")
# The descriptions below begin with the summaries of their own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_DEBIAN_WINDOW_DESCRIPTION "draw wing sections as splines over coordinate tables
Aerolith shows a table of airfoil coordinates as a template, over which a
quadratic B-spline is drawn with the mouse. Thickness and crests are shown
as you draw, and two stations mark the air intake of a ram-air wing.
Splines are saved in a format of their own and as coordinate tables.")
set(CPACK_DEBIAN_COMPANION_DESCRIPTION "check, convert, fit, measure and draw wing sections
aerolith-cli works on coordinate tables of wing sections and on splines, one
file or a hundred thousand, without a display. It identifies and
converts files, fits splines to tables, measures and compares sections, and
draws pictures, and the ribs of ram-air wings at full size.
.
This package also contains the documentation of both programs and sample sections.")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL window companion)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME aerolith)
set(CPACK_DEBIAN_WINDOW_PACKAGE_RECOMMENDS aerolith-cli)
set(CPACK_DEBIAN_COMPANION_PACKAGE_NAME aerolith-cli)
# The font of pdf and png, which no library names.
set(CPACK_DEBIAN_COMPANION_PACKAGE_DEPENDS fonts-dejavu-core)
# One package held everything before.
set(CPACK_DEBIAN_COMPANION_PACKAGE_BREAKS "aerolith (<< 1.1.0)")
set(CPACK_DEBIAN_COMPANION_PACKAGE_REPLACES "aerolith (<< 1.1.0)")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE aerolith)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
