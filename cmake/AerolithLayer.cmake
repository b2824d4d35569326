# SPDX-FileCopyrightText: Aerolith developers
# aerolith_layer(<name> SOURCES <file>... LINKS <target>...)
#
# Adds the library aerolith_<name> of the folder <name>. Its headers are
# reached as "<name>/<file>" through a view folder that holds this layer alone,
# and a layer sees the views of the layers it links: an include against the
# order of the layers finds no file.
function(aerolith_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
  set(view "${PROJECT_BINARY_DIR}/layers/${name}")
  file(MAKE_DIRECTORY "${view}")
  file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${view}/${name}" SYMBOLIC)

  add_library(aerolith_${name} STATIC ${arg_SOURCES})
  target_include_directories(aerolith_${name} PUBLIC "${view}")
  target_link_libraries(aerolith_${name} PUBLIC ${arg_LINKS} PRIVATE aerolith_flags)
endfunction()
