# SPDX-License-Identifier: GPL-3.0-or-later
# Debian's mingw-w64 for 64-bit Windows, with POSIX threads, which std::thread needs. packaging/windows/build.sh makes the
# folder of libraries.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(tool x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${tool}-gcc-posix)
set(CMAKE_CXX_COMPILER ${tool}-g++-posix)
set(CMAKE_RC_COMPILER ${tool}-windres)

get_filename_component(root "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)
set(QUOREL_WINDOWS_LIBRARIES "${root}/build/windows-libraries" CACHE PATH "What packaging/windows/build-libraries.sh has made")
set(CMAKE_FIND_ROOT_PATH "/usr/${tool}" "${QUOREL_WINDOWS_LIBRARIES}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# JUCE and CLI11 are sources, and the same for every system.
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# The library itself, not the one that names a DLL.
set(ZLIB_LIBRARY "/usr/${tool}/lib/libz.a" CACHE FILEPATH "")

# Nothing but the system's own libraries is needed where it runs.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_MODULE_LINKER_FLAGS_INIT -static)
