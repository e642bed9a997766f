# SPDX-License-Identifier: GPL-3.0-or-later
# What a binary for Windows gets besides its code: quorel_windows_product(TARGET) takes its debug symbols out of it, into
# symbols/ of the build, and has a DLL leave nothing behind; quorel_windows_product(TARGET "What it is") also says its name
# and version in its properties, where JUCE doesn't. For other systems it does nothing.
function(quorel_windows_product target)
    if(NOT MINGW)
        return()
    endif()

    if(ARGC GREATER 1)
        set(description "${ARGV1}")
        string(REPLACE "." "," commaVersion "${PROJECT_VERSION}")
        configure_file("${PROJECT_SOURCE_DIR}/packaging/windows/product.rc.in" "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc" @ONLY)
        target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
    endif()

    get_target_property(type ${target} TYPE)
    if(type STREQUAL MODULE_LIBRARY)
        target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/src/platform/PlatformSeamUnload.cpp")
    endif()

    set(symbols "${CMAKE_BINARY_DIR}/symbols")
    file(MAKE_DIRECTORY "${symbols}")
    # Finds the symbols by their file's name: a debugger is told the folder.
    set(symbolFile "$<TARGET_FILE_NAME:${target}>.debug")
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND "${CMAKE_OBJCOPY}" --only-keep-debug "$<TARGET_FILE:${target}>" "${symbols}/${symbolFile}"
        COMMAND "${CMAKE_STRIP}" --strip-all "$<TARGET_FILE:${target}>"
        COMMAND "${CMAKE_COMMAND}" -E chdir "${symbols}" "${CMAKE_OBJCOPY}" "--add-gnu-debuglink=${symbolFile}" "$<TARGET_FILE:${target}>"
        VERBATIM)
endfunction()
