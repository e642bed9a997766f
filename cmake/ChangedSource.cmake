# SPDX-License-Identifier: GPL-3.0-or-later
# Changed copies of JUCE's sources. Configuring stops if JUCE's text isn't what a change expects.

# Reads a text with a line end of its own kind.
function(quorel_read_source file variable)
    file(READ "${file}" text)
    string(REPLACE "\r\n" "\n" text "${text}")
    set(${variable} "${text}" PARENT_SCOPE)
endfunction()

# Replaces `old`, which must be there `count` times, by `new` in the text of `variable`. No text may have a semicolon in
# brackets only, which CMake would take for a list. `where` is the file of ours to look at if JUCE has changed.
function(quorel_change_source variable where count old new)
    string(LENGTH "${old}" oldLength)
    string(LENGTH "${${variable}}" lengthBefore)
    string(REPLACE "${old}" "" without "${${variable}}")
    string(LENGTH "${without}" lengthWithout)
    math(EXPR expected "${lengthBefore} - ${count} * ${oldLength}")
    if(NOT lengthWithout EQUAL expected)
        message(FATAL_ERROR "JUCE's source was to have this ${count} times, look at ${where}: ${old}")
    endif()
    string(REPLACE "${old}" "${new}" changed "${${variable}}")
    set(${variable} "${changed}" PARENT_SCOPE)
endfunction()
