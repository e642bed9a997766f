#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the libraries that Debian has for its own systems only, from Debian's sources, for Windows:
#   packaging/windows/build-libraries.sh FOLDER
# FOLDER gets include/ and lib/. What is there already stays as it is.
set -euo pipefail

folder="$(mkdir -p "$1" && cd "$1" && pwd)"
mirror="${QUOREL_DEBIAN_MIRROR:-http://deb.debian.org/debian}"
tool=x86_64-w64-mingw32
made="$folder/made-of"
wanted="libpng1.6 libjpeg-turbo flac benchmark, zlib $(dpkg-query -W -f='${Version}' libz-mingw-w64-dev)"
[[ "$(cat "$made" 2> /dev/null)" == "$wanted" ]] && exit 0

work="$folder/work"
rm -rf "$work" "$folder/include" "$folder/lib"
mkdir -p "$work/lists/partial" "$folder/include" "$folder/lib"
trap 'rm -rf "$work"' EXIT

# A list of sources of our own: the system's stays as it is.
release="$(. /etc/os-release && echo "$VERSION_CODENAME")"
echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $mirror $release main" > "$work/sources.list"
apt=(apt-get -q -o "Dir::Etc::SourceList=$work/sources.list" -o Dir::Etc::SourceParts=- -o "Dir::State::Lists=$work/lists"
     -o Dir::Cache::SrcPkgCache= -o Dir::Cache::PkgCache= -o APT::Sandbox::User=root)
"${apt[@]}" update
(cd "$work" && "${apt[@]}" source libpng1.6 libjpeg-turbo flac benchmark)

# configure_and_install FOLDER OPTION...: a library with a CMake build of its own.
configure_and_install()
{
    local source="$1"
    shift
    cmake -G Ninja -S "$source" -B "$source-build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$folder" \
          -DCMAKE_INSTALL_LIBDIR="$folder/lib" -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_SYSTEM_PROCESSOR=x86_64 \
          -DCMAKE_C_COMPILER="$tool-gcc-posix" -DCMAKE_CXX_COMPILER="$tool-g++-posix" -DCMAKE_RC_COMPILER="$tool-windres" \
          -DCMAKE_FIND_ROOT_PATH="/usr/$tool;$folder" -DCMAKE_FIND_ROOT_PATH_MODE_PROGRAM=NEVER \
          -DCMAKE_FIND_ROOT_PATH_MODE_LIBRARY=ONLY -DCMAKE_FIND_ROOT_PATH_MODE_INCLUDE=ONLY \
          -DCMAKE_FIND_ROOT_PATH_MODE_PACKAGE=ONLY "$@"
    cmake --build "$source-build"
    cmake --install "$source-build"
}

# The portable code is fast enough for the pictures of an editor, and needs no assembler.
configure_and_install "$work"/libjpeg-turbo-* -DENABLE_SHARED=OFF -DWITH_SIMD=OFF -DWITH_TURBOJPEG=OFF -DWITH_CRT_DLL=ON
# JUCE asks for the internal part of its header, which Debian's package has as well.
cp "$work"/libjpeg-turbo-*/jpegint.h "$folder/include/"
# JUCE reads the header into a namespace, and looks there for this type, which the system's headers may have outside.
sed -i '/#ifndef __RPCNDR_H__/,/#endif/c typedef unsigned char boolean;' "$folder/include/jconfig.h"
configure_and_install "$work"/libpng1.6-* -DPNG_SHARED=OFF -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF \
    -DZLIB_LIBRARY="/usr/$tool/lib/libz.a" -DZLIB_INCLUDE_DIR="/usr/$tool/include"
configure_and_install "$work"/flac-* -DWITH_OGG=OFF -DBUILD_CXXLIBS=OFF -DBUILD_PROGRAMS=OFF -DBUILD_EXAMPLES=OFF -DBUILD_TESTING=OFF \
    -DBUILD_DOCS=OFF -DINSTALL_MANPAGES=OFF -DWITH_STACK_PROTECTOR=OFF -DWITH_FORTIFY_SOURCE=OFF
configure_and_install "$work"/benchmark-* -DBENCHMARK_ENABLE_TESTING=OFF -DBENCHMARK_ENABLE_GTEST_TESTS=OFF \
    -DBENCHMARK_ENABLE_WERROR=OFF -DRUN_HAVE_STD_REGEX=0 -DRUN_HAVE_STEADY_CLOCK=0 -DGIT_VERSION=1.7.1 -DBENCHMARK_INSTALL_DOCS=OFF

echo "$wanted" > "$made"
