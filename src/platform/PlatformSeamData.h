// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the platform's seam that has files of the build within the binary: in its resource section on Windows, in
// its read-only data elsewhere, where a GNU assembler includes them. Compiling arrays of their size would take minutes.
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** Bytes of the program's own read-only data. */
struct BuiltInBytes
{
    const void* data = nullptr;
    size_t size = 0;
};

#if JUCE_WINDOWS

/** A resource of the type RCDATA of the binary that this stands in; empty where it isn't there. Any thread. */
BuiltInBytes builtInResource(int number) noexcept;

// The resource of this number; the build lists them in a file of its own.
#define QUOREL_BUILT_IN_FILE(accessor, number, path)                                                         \
    BuiltInBytes accessor() noexcept                                                                         \
    {                                                                                                        \
        return builtInResource(number);                                                                      \
    }

#else

#if JUCE_MAC
#define QUOREL_SECTION ".section __TEXT,__const\n"
#define QUOREL_SYMBOL(name) "_" #name
#define QUOREL_HIDDEN(name) ".private_extern _" #name "\n"
#define QUOREL_SECTION_END ".text\n"
#else
#define QUOREL_SECTION ".pushsection .rodata\n"
#define QUOREL_SYMBOL(name) #name
#define QUOREL_HIDDEN(name) ".hidden " #name "\n"
#define QUOREL_SECTION_END ".popsection\n"
#endif

#define QUOREL_EMBED(name, path)                                                                             \
    __asm__(QUOREL_SECTION                                                                                   \
            ".balign 16\n"                                                                                   \
            ".globl " QUOREL_SYMBOL(name##Start) "\n" QUOREL_HIDDEN(name##Start)                             \
                QUOREL_SYMBOL(name##Start) ":\n"                                                             \
                                           ".incbin \"" path "\"\n"                                          \
                                           ".globl " QUOREL_SYMBOL(name##End) "\n" QUOREL_HIDDEN(name##End)  \
                                               QUOREL_SYMBOL(name##End) ":\n"                                \
                                                                        ".byte 0\n" QUOREL_SECTION_END);     \
    extern "C" __attribute__((visibility("hidden"))) const unsigned char name##Start[];                      \
    extern "C" __attribute__((visibility("hidden"))) const unsigned char name##End[]

// Defines `accessor`, which returns the bytes of the file that the build has at `path`.
#define QUOREL_BUILT_IN_FILE(accessor, number, path)                                                         \
    QUOREL_EMBED(quorel_##accessor, path);                                                                   \
    BuiltInBytes accessor() noexcept                                                                         \
    {                                                                                                        \
        return {quorel_##accessor##Start,                                                                    \
                static_cast<size_t>(quorel_##accessor##End - quorel_##accessor##Start)};                     \
    }

#endif

} // namespace quorel
