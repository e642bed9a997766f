# SPDX-License-Identifier: GPL-3.0-or-later
# `quorel_juce`: all JUCE modules in use, compiled once into a static library that the plug-in, tools, tests and
# benchmarks share. It hosts VST2 through the FST headers.
find_package(JUCE 7.0.5 REQUIRED)
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)

juce_set_vst2_sdk_path("${CMAKE_CURRENT_SOURCE_DIR}/cmake/fst")

# Hosted instruments ask for their host's name, and the answer must not depend on the program around us: in JUCE a
# standalone application's name overrides JUCE_VST_FALLBACK_HOST_NAME. A changed copy of that one source goes into the
# build tree. Configuring stops if JUCE's text isn't what is expected here.
set(juceProcessors "${JUCE_MODULES_DIR}/juce_audio_processors")
set(patchedDir "${CMAKE_BINARY_DIR}/patched-juce")
file(READ "${juceProcessors}/format_types/juce_VSTPluginFormat.cpp" vstFormatText)
set(overrideText
    "        if (auto* app = JUCEApplicationBase::getInstance())\n            hostName = app->getApplicationName();\n")
string(REPLACE "\r\n" "\n" vstFormatText "${vstFormatText}")
string(LENGTH "${vstFormatText}" lengthBefore)
string(LENGTH "${overrideText}" overrideLength)
string(REPLACE "${overrideText}" "" vstFormatText "${vstFormatText}")
string(LENGTH "${vstFormatText}" lengthAfter)
math(EXPR removed "${lengthBefore} - ${lengthAfter}")
if(NOT removed EQUAL overrideLength)
    message(FATAL_ERROR "JUCE's VST2 host name override was not found exactly once: look at cmake/SharedJuce.cmake")
endif()
file(CONFIGURE OUTPUT "${patchedDir}/format_types/juce_VSTPluginFormat.cpp" CONTENT "${vstFormatText}" @ONLY)
configure_file("${juceProcessors}/juce_audio_processors.cpp" "${patchedDir}/juce_audio_processors.cpp" COPYONLY)
get_target_property(processorSources juce_audio_processors INTERFACE_SOURCES)
list(FILTER processorSources EXCLUDE REGEX "/juce_audio_processors\\.cpp$")
set_target_properties(juce_audio_processors PROPERTIES INTERFACE_SOURCES "${processorSources}")

# On a server without a window manager some atoms don't exist, and JUCE's windows end the process with an X error over
# the missing ones. In another changed copy JUCE creates the atoms that it takes for granted.
set(juceGui "${JUCE_MODULES_DIR}/juce_gui_basics")
file(READ "${juceGui}/native/x11/juce_linux_XWindowSystem.cpp" windowSystemText)
string(REPLACE "\r\n" "\n" windowSystemText "${windowSystemText}")
string(REGEX MATCHALL "= getIfExists \\(display, \"" grantedAtoms "${windowSystemText}")
list(LENGTH grantedAtoms numGrantedAtoms)
if(NOT numGrantedAtoms EQUAL 9)
    message(FATAL_ERROR "JUCE's window manager atoms were not found as expected: look at cmake/SharedJuce.cmake")
endif()
string(REPLACE "= getIfExists (display, \"" "= getCreating (display, \"" windowSystemText "${windowSystemText}")
file(CONFIGURE OUTPUT "${patchedDir}/native/x11/juce_linux_XWindowSystem.cpp" CONTENT "${windowSystemText}" @ONLY)
configure_file("${juceGui}/juce_gui_basics.cpp" "${patchedDir}/juce_gui_basics.cpp" COPYONLY)
get_target_property(guiSources juce_gui_basics INTERFACE_SOURCES)
list(FILTER guiSources EXCLUDE REGEX "/juce_gui_basics\\.cpp$")
set_target_properties(juce_gui_basics PROPERTIES INTERFACE_SOURCES "${guiSources}")

set_source_files_properties("${patchedDir}/juce_gui_basics.cpp" PROPERTIES INCLUDE_DIRECTORIES "${juceGui}")

add_library(quorel_juce STATIC "${patchedDir}/juce_audio_processors.cpp" "${patchedDir}/juce_gui_basics.cpp")

target_include_directories(quorel_juce PRIVATE "${juceProcessors}" "${juceProcessors}/format_types")
target_link_libraries(quorel_juce
    PRIVATE
        juce::juce_audio_basics juce::juce_audio_devices juce::juce_audio_formats juce::juce_audio_processors
        juce::juce_audio_utils juce::juce_core juce::juce_data_structures juce::juce_events juce::juce_graphics
        juce::juce_gui_basics juce::juce_gui_extra
        # Before the system's folders, where FST's own headers would answer to the same names.
        juce_vst2_sdk
    PUBLIC Threads::Threads)

target_compile_definitions(quorel_juce
    PUBLIC
        JUCE_GLOBAL_MODULE_SETTINGS_INCLUDED=1
        JUCE_PLUGINHOST_VST=1
        JUCE_PLUGINHOST_VST3=0
        JUCE_PLUGINHOST_LV2=0
        JUCE_PLUGINHOST_LADSPA=0
        JUCE_VST_FALLBACK_HOST_NAME="OS-QUOREL"
        JUCE_VST3_CAN_REPLACE_VST2=0
        JUCE_MODAL_LOOPS_PERMITTED=1
        JUCE_WEB_BROWSER=0
        JUCE_USE_CURL=0
        JUCE_USE_OGGVORBIS=0
        JUCE_USE_CDREADER=0
        JUCE_USE_CDBURNER=0
        JUCE_DISPLAY_SPLASH_SCREEN=0
        JUCE_REPORT_APP_USAGE=0
        JUCE_STRICT_REFCOUNTEDPOINTER=1
    INTERFACE
        $<TARGET_PROPERTY:quorel_juce,COMPILE_DEFINITIONS>)
target_compile_options(quorel_juce PRIVATE -w)
target_include_directories(quorel_juce SYSTEM INTERFACE $<TARGET_PROPERTY:quorel_juce,INCLUDE_DIRECTORIES>)

if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    pkg_check_modules(QUOREL_IMAGE REQUIRED IMPORTED_TARGET libpng libjpeg zlib)
    target_link_libraries(quorel_juce PUBLIC PkgConfig::QUOREL_IMAGE ${CMAKE_DL_LIBS})
    # The modules look these up for their own targets; here those are linked privately, so users need them again.
    pkg_check_modules(QUOREL_SOUND REQUIRED IMPORTED_TARGET alsa flac freetype2)
    target_link_libraries(quorel_juce PUBLIC PkgConfig::QUOREL_SOUND rt)
endif()

# Most of the time that one of our sources takes to compile goes into JUCE's headers. Release builds do without a
# precompiled header, so that a missing include is noticed.
option(QUOREL_PRECOMPILE "Compile JUCE's headers once: builds in a third of the time, for work on the code" OFF)

function(quorel_precompile target)
    if(QUOREL_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE
            <juce_audio_processors/juce_audio_processors.h>
            <juce_gui_basics/juce_gui_basics.h>
            <array> <atomic> <functional> <memory> <optional> <vector>)
    endif()
endfunction()
