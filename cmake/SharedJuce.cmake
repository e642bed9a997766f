# SPDX-License-Identifier: GPL-3.0-or-later
# `quorel_juce`: all JUCE modules in use, compiled once into a static library that the plug-in, tools, tests and
# benchmarks share. It hosts VST2 through the FST headers.
# JUCE is a folder of sources and a tool that runs here, whatever system is built for.
file(GLOB juceFolders /usr/lib/*/cmake/JUCE-*)
find_package(JUCE 7.0.5 REQUIRED NO_CMAKE_FIND_ROOT_PATH HINTS ${juceFolders})
find_package(Threads REQUIRED)

juce_set_vst2_sdk_path("${CMAKE_CURRENT_SOURCE_DIR}/cmake/fst")

set(juceProcessors "${JUCE_MODULES_DIR}/juce_audio_processors")
set(patchedDir "${CMAKE_BINARY_DIR}/patched-juce")
set(changesDir "${CMAKE_CURRENT_SOURCE_DIR}/cmake/juce")
include(VstHost)

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

# Events that another call has read are handled all the same.
function(quorel_change_window_system count old new)
    quorel_change_source(windowSystemText cmake/SharedJuce.cmake ${count} "${old}" "${new}")
    set(windowSystemText "${windowSystemText}" PARENT_SCOPE)
endfunction()
quorel_change_window_system(1
    "    LinuxEventLoop::registerFdCallback (X11Symbols::getInstance()->xConnectionNumber (display),\n                                        [this] (int)\n"
    "    const std::function<void (int)> handleEvents = [this] (int)\n")
quorel_change_window_system(1
    "                                            } while (display != nullptr);\n                                        });\n"
    "                                            } while (display != nullptr);\n                                        };\n    LinuxEventLoop::registerFdCallback (X11Symbols::getInstance()->xConnectionNumber (display), handleEvents);\n    queuedXEvents = std::make_unique<QueuedXEvents> (display, handleEvents);\n")
quorel_change_window_system(1
    "        LinuxEventLoop::unregisterFdCallback (X11Symbols::getInstance()->xConnectionNumber (display));\n"
    "        queuedXEvents.reset();\n        LinuxEventLoop::unregisterFdCallback (X11Symbols::getInstance()->xConnectionNumber (display));\n")
quorel_change_window_system(1
    "bool XWindowSystem::initialiseXDisplay()\n"
    "#include \"${changesDir}/QueuedXEvents.h\"\n\nbool XWindowSystem::initialiseXDisplay()\n")

# The keyboard is taken at once. Some hosts write a user's last action on the window that they embed, when they do so, and
# never again: a request of that time would lose against all that came after it.
quorel_change_window_system(1
    "getFocusWindow (windowH), RevertToParent, (::Time) getUserTime (windowH));\n"
    "getFocusWindow (windowH), RevertToParent, CurrentTime);\n")

# What has taken the keyboard in a window keeps it when the server tells of that later. JUCE would give it back to what had
# it before.
quorel_change_window_system(1
    "        peer->focused = true;\n        peer->handleFocusGain();\n"
    "        peer->focused = true;\n\n        if (! peer->getComponent().hasKeyboardFocus (true))\n            peer->handleFocusGain();\n")

# Windows may be gone when they are asked for.
quorel_change_window_system(1
    "void XWindowSystem::destroyWindow (::Window windowH)\n"
    "#include \"${PROJECT_SOURCE_DIR}/src/platform/GoneWindows.h\"\n\nvoid XWindowSystem::destroyWindow (::Window windowH)\n")
quorel_change_window_system(1
    "    XWindowAttributes atts;\n    XWindowSystemUtilities::ScopedXLock xLock;\n\n    if (windowH != 0\n        && X11Symbols"
    "    XWindowAttributes atts;\n    XWindowSystemUtilities::ScopedXLock xLock;\n    const GoneWindowsAreNoError guard (display);\n\n    if (windowH != 0\n        && X11Symbols")
quorel_change_window_system(1
    "    const auto result = X11Symbols::getInstance()->xQueryTree (display, possibleChild,"
    "    const GoneWindowsAreNoError guard (display);\n    const auto result = X11Symbols::getInstance()->xQueryTree (display, possibleChild,")
quorel_change_window_system(1
    "    XWindowSystemUtilities::GetXProperty prop (display, windowH, atoms.state, 0, 64, false, atoms.state);\n\n    if (prop.success && prop.actualType == atoms.state\n        && prop.actualFormat == 32 && prop.numItems > 0)\n    {\n        unsigned long state;\n"
    "    const GoneWindowsAreNoError guard (display, false);\n    XWindowSystemUtilities::GetXProperty prop (display, windowH, atoms.state, 0, 64, false, atoms.state);\n\n    if (prop.success && prop.actualType == atoms.state\n        && prop.actualFormat == 32 && prop.numItems > 0)\n    {\n        unsigned long state;\n")
quorel_change_window_system(1
    "   #if JUCE_X11_SUPPORTS_XEMBED\n    juce_handleXEmbedEvent (peer, nullptr);\n   #endif\n\n    deleteIconPixmaps (windowH);\n"
    "    XWindowSystemUtilities::ScopedXLock lockOfGuard;\n    const GoneWindowsAreNoError guard (display);\n\n   #if JUCE_X11_SUPPORTS_XEMBED\n    juce_handleXEmbedEvent (peer, nullptr);\n   #endif\n\n    deleteIconPixmaps (windowH);\n")
file(CONFIGURE OUTPUT "${patchedDir}/native/x11/juce_linux_XWindowSystem.cpp" CONTENT "${windowSystemText}" @ONLY)

# A window's refresh timer runs at the display's rate even if nothing is to be painted, which costs an idle editor more
# than all the rest. In the copy it slows down to twice a second until something is.
file(READ "${juceGui}/native/juce_linux_Windowing.cpp" windowingText)
string(REPLACE "\r\n" "\n" windowingText "${windowingText}")
file(READ "${changesDir}/LinuxWindows.txt" restingParts)
foreach(change RANGE 1 4)
    string(REGEX REPLACE "^.*=== ${change} old\n(.*)=== ${change} new\n.*$" "\\1" old "${restingParts}")
    string(REGEX REPLACE "^.*=== ${change} new\n(.*)=== ${change} end\n.*$" "\\1" new "${restingParts}")
    string(FIND "${windowingText}" "${old}" found)
    if(found EQUAL -1)
        message(FATAL_ERROR "JUCE's windows weren't as expected, look at cmake/juce/LinuxWindows.txt: ${change}")
    endif()
    string(REPLACE "${old}" "${new}" windowingText "${windowingText}")
endforeach()
# Under a name of its own: a compiler's cache doesn't see that a file has come before another in the search.
file(CONFIGURE OUTPUT "${patchedDir}/native/ChangedLinuxWindowing.cpp" CONTENT "${windowingText}" @ONLY)
file(READ "${juceGui}/juce_gui_basics.cpp" guiText)
set(windowingInclude "#include \"native/juce_linux_Windowing.cpp\"")
string(FIND "${guiText}" "${windowingInclude}" found)
if(found EQUAL -1)
    message(FATAL_ERROR "JUCE's windows for Linux weren't included as expected: look at cmake/SharedJuce.cmake")
endif()
string(REPLACE "${windowingInclude}" "#include \"native/ChangedLinuxWindowing.cpp\"" guiText "${guiText}")
file(CONFIGURE OUTPUT "${patchedDir}/juce_gui_basics.cpp" CONTENT "${guiText}" @ONLY)
get_target_property(guiSources juce_gui_basics INTERFACE_SOURCES)
list(FILTER guiSources EXCLUDE REGEX "/juce_gui_basics\\.cpp$")
set_target_properties(juce_gui_basics PROPERTIES INTERFACE_SOURCES "${guiSources}")

# It would note every instrument that it opens on the standard error stream.
set_source_files_properties("${patchedDir}/juce_audio_processors.cpp" PROPERTIES COMPILE_DEFINITIONS VST_LOGGING=0)

# A debug build of JUCE would print its version.
set_source_files_properties("${JUCE_MODULES_DIR}/juce_core/juce_core.cpp"
    PROPERTIES COMPILE_DEFINITIONS JUCE_DISABLE_JUCE_VERSION_PRINTING=1)

set_source_files_properties("${patchedDir}/juce_gui_basics.cpp" PROPERTIES INCLUDE_DIRECTORIES "${juceGui}")

add_library(quorel_juce STATIC "${patchedDir}/juce_audio_processors.cpp" "${patchedDir}/juce_gui_basics.cpp")

# The standalone offers JACK, which is loaded when it runs. Nothing else sees this.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    set_source_files_properties("${JUCE_MODULES_DIR}/juce_audio_devices/juce_audio_devices.cpp"
        PROPERTIES COMPILE_DEFINITIONS "JUCE_JACK=1;JUCE_JACK_CLIENT_NAME=\"Quorel\"")
endif()

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
        JUCE_VST3_CAN_REPLACE_VST2=1
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
# JUCE compares empty blocks of memory by null pointers, its reader of GIFs copies two bytes from before a buffer that
# it goes on to fill, and that of zip files shifts negative numbers. None of it does harm; all other checks stay on.
if("undefined" IN_LIST QUOREL_SANITIZE)
    target_compile_options(quorel_juce PRIVATE -fno-sanitize=nonnull-attribute,bounds,shift)
endif()
target_include_directories(quorel_juce SYSTEM INTERFACE $<TARGET_PROPERTY:quorel_juce,INCLUDE_DIRECTORIES>)

if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(QUOREL_IMAGE REQUIRED IMPORTED_TARGET libpng libjpeg zlib)
    target_link_libraries(quorel_juce PUBLIC PkgConfig::QUOREL_IMAGE ${CMAKE_DL_LIBS})
    # The modules look these up for their own targets; here those are linked privately, so users need them again.
    pkg_check_modules(QUOREL_SOUND REQUIRED IMPORTED_TARGET alsa flac freetype2)
    target_link_libraries(quorel_juce PUBLIC PkgConfig::QUOREL_SOUND rt)
elseif(MINGW)
    # Debian's modules come without the libraries of pictures and sound that JUCE otherwise has with it.
    find_package(PNG REQUIRED)
    find_package(JPEG REQUIRED)
    find_package(ZLIB REQUIRED)
    find_library(QUOREL_FLAC FLAC REQUIRED)
    target_compile_definitions(quorel_juce PRIVATE FLAC__NO_DLL=1)
    # The order is the linker's: what needs stands before what is needed.
    target_link_libraries(quorel_juce PUBLIC PNG::PNG JPEG::JPEG ZLIB::ZLIB ${QUOREL_FLAC}
        uuid wsock32 wininet version ole32 ws2_32 oleaut32 imm32 comdlg32 shlwapi rpcrt4 winmm dxgi)
    # A file of JUCE has more sections than the format's first numbers count.
    target_compile_options(quorel_juce PRIVATE -Wa,-mbig-obj)
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
