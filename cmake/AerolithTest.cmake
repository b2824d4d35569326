# SPDX-FileCopyrightText: Aerolith developers
# aerolith_test(<name> SOURCES <file>... LINKS <target>... LABEL <label> [TIMEOUT <s>])
#
# Adds one test executable and its CTest entry. A bare `ctest` is right: platform,
# locale, time zone and home folder are set here.
function(aerolith_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "LABEL;TIMEOUT" "SOURCES;LINKS")
  if(NOT arg_LABEL)
    set(arg_LABEL unit)
  endif()
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 300)
  endif()
  add_executable(${name} ${arg_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_link_libraries(${name} PRIVATE ${arg_LINKS} aerolith_test_support aerolith_flags Qt6::Test)
  target_precompile_headers(${name} REUSE_FROM aerolith_test_support)
  # Holds no code: no reason to load the precompiled header.
  set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/mocs_compilation.cpp"
    PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
  add_test(NAME ${name} COMMAND ${name})
  aerolith_test_environment(${name} ${arg_LABEL} ${arg_TIMEOUT})
endfunction()

function(aerolith_test_environment name label timeout)
  set(home "${PROJECT_BINARY_DIR}/test-home/${name}")
  file(MAKE_DIRECTORY "${home}")
  set_tests_properties(${name} PROPERTIES
    LABELS ${label}
    TIMEOUT ${timeout}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;TZ=Pacific/Chatham;HOME=${home};XDG_CONFIG_HOME=${home}/.config;XDG_CACHE_HOME=${home}/.cache;ASAN_OPTIONS=detect_leaks=0")
endfunction()
