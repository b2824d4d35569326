# SPDX-FileCopyrightText: Aerolith developers
# Flags of every target. Without -ffp-contract=off a compiler may fuse a multiplication
# with an addition, and a processor that has this would get other last bits.
add_compile_options(-ffp-contract=off)

# gcc's straight-line vectoriser takes two neighbouring doubles that are rounded to single
# precision and widened again as unchanged once it has put them into one vector. Coordinates
# would keep digits that files and screen have lost. Seen with gcc 11.3 at -O3 and with
# gcc 12.2 at -O2 and -O3, not with clang 14; no report of it is known to us, so no version
# is taken to be mended. tst_single_precision fails where it happens.
add_compile_options(
  "$<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_GREATER_EQUAL:$<CXX_COMPILER_VERSION>,11>>:-fno-tree-slp-vectorize>")

if(AEROLITH_SANITIZE)
  add_compile_options(-fsanitize=${AEROLITH_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${AEROLITH_SANITIZE})
  # The usual linker takes five times as long for the programs with all their notes for a debugger.
  include(CheckLinkerFlag)
  check_linker_flag(CXX -fuse-ld=lld AEROLITH_HAS_LLD)
  if(AEROLITH_HAS_LLD)
    add_link_options(-fuse-ld=lld)
  endif()
  # Release builds of the headers of Qt and of the standard library drop their index checks.
  add_compile_definitions(QT_FORCE_ASSERTS _GLIBCXX_ASSERTIONS)
endif()

if(AEROLITH_BUILD_FUZZERS)
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_link_options(-fsanitize=fuzzer-no-link)
endif()

if(AEROLITH_COVERAGE)
  add_compile_definitions(AEROLITH_COVERAGE)
  add_compile_options(--coverage -O0 -g)
  add_link_options(--coverage)
endif()

# Linked PRIVATE by our own targets, so that a program that links the
# libraries keeps its own choice of warnings. The test library's QSKIP(reason) leaves the variable
# arguments of its macro empty, which clang takes for an extension before C++20.
add_library(aerolith_flags INTERFACE)
target_compile_options(aerolith_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
  $<$<BOOL:${AEROLITH_WERROR}>:-Werror>)
target_compile_definitions(aerolith_flags INTERFACE
  QT_NO_CAST_FROM_ASCII
  QT_NO_CAST_TO_ASCII
  QT_NO_CAST_FROM_BYTEARRAY
  QT_NO_URL_CAST_FROM_STRING
  QT_NO_FOREACH
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_DISABLE_DEPRECATED_BEFORE=0x060400)
