# SPDX-License-Identifier: GPL-3.0-or-later
# The libraries that are headers only: CLI11::CLI11, and FST's headers. When another system is built for, they come from
# this one's, by way of a folder of their own: /usr/include as a whole would bring this system's headers along.
if(NOT CMAKE_CROSSCOMPILING)
    find_package(CLI11 REQUIRED)
    return()
endif()

set(headers "${CMAKE_BINARY_DIR}/headers")
file(MAKE_DIRECTORY "${headers}/pluginterfaces")
foreach(header IN ITEMS CLI pluginterfaces/fst)
    if(NOT IS_DIRECTORY "/usr/include/${header}")
        message(FATAL_ERROR "/usr/include/${header} is missing: packaging/debian-packages.txt has its package")
    endif()
    file(CREATE_LINK "/usr/include/${header}" "${headers}/${header}" SYMBOLIC)
endforeach()

include_directories(SYSTEM "${headers}")
add_library(CLI11::CLI11 INTERFACE IMPORTED GLOBAL)
