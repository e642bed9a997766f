// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/BuiltInData.h"

// A GNU assembler includes the files as they are: compiling arrays of this size takes minutes and gigabytes.
// Where there is none, the build writes the arrays all the same.
#if QUOREL_BUILT_IN_ARRAYS

#include "BuiltInArrays.inc"

#define QUOREL_BUILT_IN(name)                                                                                \
    {                                                                                                        \
        name##Bytes, sizeof(name##Bytes)                                                                     \
    }

#else

#if defined(__APPLE__)
#define QUOREL_SECTION ".section __TEXT,__const\n"
#define QUOREL_SYMBOL(name) "_" #name
#define QUOREL_HIDDEN(name) ".private_extern _" #name "\n"
#define QUOREL_SECTION_END ".text\n"
#elif defined(_WIN32)
#define QUOREL_SECTION ".section .rdata,\"dr\"\n"
#define QUOREL_SYMBOL(name) #name
#define QUOREL_HIDDEN(name) ""
#define QUOREL_SECTION_END ".text\n"
#else
#define QUOREL_SECTION ".pushsection .rodata\n"
#define QUOREL_SYMBOL(name) #name
#define QUOREL_HIDDEN(name) ".hidden " #name "\n"
#define QUOREL_SECTION_END ".popsection\n"
#endif

#define QUOREL_EMBED(name, file)                                                                             \
    __asm__(QUOREL_SECTION                                                                                   \
            ".balign 16\n"                                                                                   \
            ".globl " QUOREL_SYMBOL(name##Start) "\n" QUOREL_HIDDEN(name##Start)                             \
                QUOREL_SYMBOL(name##Start) ":\n"                                                             \
                                           ".incbin \"" file "\"\n"                                          \
                                           ".globl " QUOREL_SYMBOL(name##End) "\n" QUOREL_HIDDEN(name##End)  \
                                               QUOREL_SYMBOL(name##End) ":\n"                                \
                                                                        ".byte 0\n" QUOREL_SECTION_END);     \
    extern "C" __attribute__((visibility("hidden"))) const unsigned char name##Start[];                      \
    extern "C" __attribute__((visibility("hidden"))) const unsigned char name##End[]

QUOREL_EMBED(quorelImageBlock, QUOREL_IMAGE_BLOCK_FILE);
QUOREL_EMBED(quorelRegularFont, QUOREL_REGULAR_FONT_FILE);
QUOREL_EMBED(quorelBoldFont, QUOREL_BOLD_FONT_FILE);
QUOREL_EMBED(quorelIcons, QUOREL_ICON_FILE);

#define QUOREL_BUILT_IN(name)                                                                                \
    {                                                                                                        \
        name##Start, static_cast<size_t>(name##End - name##Start)                                            \
    }

#endif

namespace quorel
{

BuiltInBytes imageBlock() noexcept
{
    return QUOREL_BUILT_IN(quorelImageBlock);
}

BuiltInBytes regularFontFile() noexcept
{
    return QUOREL_BUILT_IN(quorelRegularFont);
}

BuiltInBytes boldFontFile() noexcept
{
    return QUOREL_BUILT_IN(quorelBoldFont);
}

BuiltInBytes iconFile() noexcept
{
    return QUOREL_BUILT_IN(quorelIcons);
}

} // namespace quorel
