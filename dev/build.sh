# SPDX-FileCopyrightText: Aerolith developers
# shellcheck shell=bash
# Sourced by the commands that build: configuring a folder below build/.

# configured <folder>: true for a folder that was configured from here.
configured() {
    # CMake writes down the path without links.
    [[ -f $1/build.ninja ]] &&
        grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$(pwd -P)" "$1/CMakeCache.txt"
}

# configure <folder> <cmake argument>...
configure() {
    local folder=$1
    shift
    # CMake refuses a folder that was copied or moved here with its tree.
    local fresh=()
    configured "$folder" || fresh=(--fresh)
    if command -v ccache >/dev/null; then
        export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$(pwd -P)} CCACHE_NOHASHDIR=1
        set -- -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "$@"
    fi
    cmake "${fresh[@]}" -S . -B "$folder" -G Ninja "$@"
}
