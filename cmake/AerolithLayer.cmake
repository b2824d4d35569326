# SPDX-FileCopyrightText: Aerolith developers
# aerolith_layer(<name> SOURCES <file>... LINKS <target>... [FOLDER <folder>] [HEADERS <file>...])
#
# Adds the library aerolith_<name> of the folder <folder>, by default <name>. Its headers
# are reached as "<folder>/<file>" through a view folder, and a layer sees the views of
# the layers it links: an include against the order of the layers finds no file. The view
# holds the whole folder, or just the headers named where two targets share a folder.
function(aerolith_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "FOLDER" "SOURCES;LINKS;HEADERS")
  if(NOT arg_FOLDER)
    set(arg_FOLDER ${name})
  endif()
  set(view "${PROJECT_BINARY_DIR}/layers/${name}")
  set(folder "${view}/${arg_FOLDER}")
  if(arg_HEADERS)
    file(REMOVE_RECURSE "${view}")
    file(MAKE_DIRECTORY "${folder}")
    foreach(header IN LISTS arg_HEADERS)
      file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}/${header}" "${folder}/${header}" SYMBOLIC)
    endforeach()
  else()
    file(MAKE_DIRECTORY "${view}")
    file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${folder}" SYMBOLIC)
  endif()

  add_library(aerolith_${name} ${AEROLITH_LAYERS} ${arg_SOURCES})
  target_include_directories(aerolith_${name} PUBLIC "${view}")
  target_link_libraries(aerolith_${name} PUBLIC ${arg_LINKS} PRIVATE aerolith_flags)
  if(name STREQUAL numerics)
    # What every layer may include: the standard library and Qt without widgets.
    target_precompile_headers(aerolith_numerics PRIVATE
      <QByteArray> <QJsonArray> <QJsonObject> <QList> <QPolygonF> <QString> <QStringList>
      <algorithm> <array> <cmath> <functional> <limits> <map> <numeric> <optional> <string>
      <string_view> <utility> <vector>)
  else()
    target_precompile_headers(aerolith_${name} REUSE_FROM aerolith_numerics)
  endif()
endfunction()
