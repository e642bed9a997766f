# SPDX-License-Identifier: GPL-3.0-or-later
# Compiler settings shared by every target, and `quorel_warnings` for our own code alone.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()

find_program(QUOREL_CCACHE ccache)
if(QUOREL_CCACHE)
    set(CMAKE_C_COMPILER_LAUNCHER "${QUOREL_CCACHE}")
    set(CMAKE_CXX_COMPILER_LAUNCHER "${QUOREL_CCACHE}")
endif()

# A preset must sound the same on every machine: the compiler may not fuse multiplications with additions.
add_compile_options(-ffp-contract=off)

if(QUOREL_SANITIZE)
    list(JOIN QUOREL_SANITIZE "," sanitizers)
    add_compile_options(-fsanitize=${sanitizers} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    # The vptr check needs type information from every binary involved, and hosted plug-ins have none to offer.
    if("undefined" IN_LIST QUOREL_SANITIZE)
        add_compile_options(-fno-sanitize=vptr)
    endif()
    add_link_options(-fsanitize=${sanitizers})
endif()

add_library(quorel_warnings INTERFACE)
target_compile_options(quorel_warnings INTERFACE
    -Wall -Wextra -Werror -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Wold-style-cast
    -Wcast-align -Woverloaded-virtual -Wnull-dereference -Wformat=2 -Wno-error=null-dereference)
