# SPDX-License-Identifier: GPL-3.0-or-later
# `cmake --install`, and the tarball by CPack. Two components, as the packages are: `quorel`, the plug-ins and programs,
# and `quorel-data`, what they need. A third, `archive`, is in the tarball alone. Windows has packaging/windows.
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux" OR QUOREL_SANITIZE)
    return()
endif()

include(GNUInstallDirs)
# Whatever the umask: what is for all users is for all users.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
# The programs look for it as `../lib/quorel`, and the plug-ins as a folder beside their own, wherever libraries go otherwise.
set(dataDir lib/quorel)
set(pluginDir lib)
set(linuxFiles "${PROJECT_SOURCE_DIR}/packaging/linux")

file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/completions")

# Icons of the program and of preset files, for menus and file managers.
set(iconDir "${CMAKE_BINARY_DIR}/icons")
set(icons)
foreach(size IN ITEMS 16 22 24 32 48 64 96 128 256 512)
    set(folder "${iconDir}/hicolor/${size}x${size}")
    add_custom_command(
        OUTPUT "${folder}/apps/quorel.png" "${folder}/mimetypes/application-x-quorel-preset.png"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${folder}/apps" "${folder}/mimetypes"
        COMMAND quorel-artwork --icon-size ${size} --icons "${folder}/apps/quorel.png"
        COMMAND quorel-artwork --icon-size ${size} --document --icons "${folder}/mimetypes/application-x-quorel-preset.png"
        DEPENDS quorel-artwork
        VERBATIM)
    list(APPEND icons "${folder}/apps/quorel.png" "${folder}/mimetypes/application-x-quorel-preset.png")
endforeach()
add_custom_target(icons ALL DEPENDS ${icons})
add_dependencies(products icons)
install(DIRECTORY "${iconDir}/hicolor" DESTINATION "${CMAKE_INSTALL_DATADIR}/icons" COMPONENT quorel-data)

# What each program is called where it is installed, and the target that makes it.
set(programs quorel quorel-render quorel-setup quorel-presets)
set(target_of_quorel Quorel_Standalone)
foreach(program IN LISTS programs)
    if(NOT DEFINED target_of_${program})
        set(target_of_${program} ${program})
    endif()
    install(PROGRAMS "$<TARGET_FILE:${target_of_${program}}>" DESTINATION "${CMAKE_INSTALL_BINDIR}" RENAME ${program}
        COMPONENT quorel)
endforeach()

# Manual pages say what --help says. Wants help2man; without it there are none.
find_program(QUOREL_HELP2MAN help2man)
if(QUOREL_HELP2MAN)
    set(manPages)
    foreach(program IN LISTS programs)
        set(page "${CMAKE_BINARY_DIR}/man/${program}.1")
        add_custom_command(OUTPUT "${page}"
            COMMAND "${CMAKE_COMMAND}" -E make_directory "${CMAKE_BINARY_DIR}/man"
            COMMAND "${linuxFiles}/man/make-man-page.sh" "$<TARGET_FILE:${target_of_${program}}>" ${program} ${PROJECT_VERSION}
                    "${page}"
            DEPENDS ${target_of_${program}} "${linuxFiles}/man/make-man-page.sh" "${linuxFiles}/man/${program}.h2m"
            VERBATIM)
        list(APPEND manPages "${page}")
    endforeach()
    add_custom_target(man_pages ALL DEPENDS ${manPages})
    add_dependencies(products man_pages)
    install(FILES ${manPages} DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT quorel)
else()
    message(STATUS "No manual pages: help2man is missing")
endif()

# The plug-ins.
install(FILES "$<TARGET_FILE:Quorel_VST>" DESTINATION "${pluginDir}/vst" COMPONENT quorel)
if(TARGET Quorel_VST3)
    install(DIRECTORY "${QUOREL_DIST_DIR}/Quorel.vst3" DESTINATION "${pluginDir}/vst3" COMPONENT quorel)
endif()
if(TARGET Quorel_LV2)
    install(DIRECTORY "${QUOREL_DIST_DIR}/Quorel.lv2" DESTINATION "${pluginDir}/lv2" COMPONENT quorel)
endif()

# What they need, in the same order as in the distribution folder.
install(DIRECTORY "${QUOREL_DIST_DIR}/Ostrand" "${QUOREL_DIST_DIR}/Banks" "${QUOREL_DIST_DIR}/presets"
    DESTINATION "${dataDir}" COMPONENT quorel-data)
if(TARGET user_guide)
    install(DIRECTORY "${QUOREL_DIST_DIR}/Help" DESTINATION "${dataDir}" COMPONENT quorel-data)
endif()

# install() strips only what it knows as a target under its own name.
install(CODE "
if(CMAKE_INSTALL_DO_STRIP)
    set(root \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
    file(GLOB_RECURSE binaries \"\${root}/${pluginDir}/vst/Quorel.so\" \"\${root}/${pluginDir}/vst3/Quorel.vst3/*.so\"
        \"\${root}/${pluginDir}/lv2/Quorel.lv2/*.so\")
    set(programDir \"${CMAKE_INSTALL_BINDIR}\")
    cmake_path(ABSOLUTE_PATH programDir BASE_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\")
    foreach(program IN ITEMS ${programs})
        list(APPEND binaries \"\$ENV{DESTDIR}\${programDir}/\${program}\")
    endforeach()
    execute_process(COMMAND \"${CMAKE_STRIP}\" --strip-unneeded \${binaries} COMMAND_ERROR_IS_FATAL ANY)
endif()" COMPONENT quorel)
install(CODE "
if(CMAKE_INSTALL_DO_STRIP)
    file(GLOB_RECURSE binaries \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${dataDir}/Ostrand/*.so\")
    execute_process(COMMAND \"${CMAKE_STRIP}\" --strip-unneeded \${binaries} COMMAND_ERROR_IS_FATAL ANY)
endif()" COMPONENT quorel-data)

# What a desktop and a shell know of them. The release has the time of the commit, or of the source package.
execute_process(COMMAND git -C "${PROJECT_SOURCE_DIR}" log -1 --format=%cs
    OUTPUT_VARIABLE release_date OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(NOT release_date)
    string(TIMESTAMP release_date "%Y-%m-%d" UTC)
endif()
configure_file("${linuxFiles}/org.ostrand.quorel.metainfo.xml.in" "${CMAKE_BINARY_DIR}/org.ostrand.quorel.metainfo.xml" @ONLY)
install(FILES "${CMAKE_BINARY_DIR}/org.ostrand.quorel.metainfo.xml" DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo"
    COMPONENT quorel)
install(FILES "${linuxFiles}/org.ostrand.quorel.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications" COMPONENT quorel)
install(FILES "${linuxFiles}/quorel-mime.xml" DESTINATION "${CMAKE_INSTALL_DATADIR}/mime/packages" RENAME quorel.xml
    COMPONENT quorel)
install(FILES "${linuxFiles}/quorel.bash" DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME quorel
    COMPONENT quorel)
# Bash looks for a file of each program's name.
foreach(program IN ITEMS quorel-render quorel-setup quorel-presets)
    file(CREATE_LINK quorel "${CMAKE_BINARY_DIR}/completions/${program}" SYMBOLIC)
    install(FILES "${CMAKE_BINARY_DIR}/completions/${program}"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT quorel)
endforeach()

# The tarball: the same tree below a folder of its own, and what installs it without root.
set(archiveFiles "${PROJECT_SOURCE_DIR}/packaging/tarball")
configure_file("${archiveFiles}/README.txt.in" "${CMAKE_BINARY_DIR}/tarball/README.txt" @ONLY)
install(PROGRAMS "${archiveFiles}/install.sh" DESTINATION . COMPONENT archive EXCLUDE_FROM_ALL)
install(FILES "${CMAKE_BINARY_DIR}/tarball/README.txt" "${PROJECT_SOURCE_DIR}/LICENSE" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
    DESTINATION . COMPONENT archive EXCLUDE_FROM_ALL)
set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_FILE_NAME "quorel-${PROJECT_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR}")
set(CPACK_OUTPUT_FILE_PREFIX "${CMAKE_BINARY_DIR}/packages")
set(CPACK_COMPONENTS_ALL quorel quorel-data archive)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
