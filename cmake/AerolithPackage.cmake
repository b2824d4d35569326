# SPDX-FileCopyrightText: Aerolith developers
# Read by CPack before it makes the packages.
if(CPACK_GENERATOR STREQUAL DEB)
  # Without dpkg-shlibdeps CPack would make packages that name no library.
  find_program(AEROLITH_SHLIBDEPS dpkg-shlibdeps)
  if(NOT AEROLITH_SHLIBDEPS)
    message(FATAL_ERROR "dpkg-shlibdeps is missing: dev/install_packages.sh deb")
  endif()
  # CPack gives folders the rights that the umask leaves, and no setting is stronger than it.
  execute_process(COMMAND sh -c umask OUTPUT_VARIABLE AEROLITH_UMASK COMMAND_ERROR_IS_FATAL ANY)
  if(NOT AEROLITH_UMASK MATCHES "^0*22\n$")
    message(FATAL_ERROR "Packages are made under the umask 022: umask 022; cpack ...")
  endif()
  # The time of all files is that of the release, so that the same sources give the same bytes.
  if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(
      COMMAND dpkg-parsechangelog --file "${CMAKE_CURRENT_LIST_DIR}/../share/changelog"
        --show-field Timestamp
      OUTPUT_VARIABLE AEROLITH_RELEASED OUTPUT_STRIP_TRAILING_WHITESPACE
      COMMAND_ERROR_IS_FATAL ANY)
    set(ENV{SOURCE_DATE_EPOCH} "${AEROLITH_RELEASED}")
  endif()
endif()
