# SPDX-FileCopyrightText: Aerolith developers
# Read by CPack before it makes a package. Without dpkg-shlibdeps it would make one that names
# no library.
if(CPACK_GENERATOR STREQUAL DEB)
  find_program(AEROLITH_SHLIBDEPS dpkg-shlibdeps)
  if(NOT AEROLITH_SHLIBDEPS)
    message(FATAL_ERROR "dpkg-shlibdeps is missing: dev/install_packages.sh deb")
  endif()
endif()
