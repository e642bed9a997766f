// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PlatformSeamData.h"

#if JUCE_WINDOWS
#include <windows.h>
#endif

namespace quorel
{

#if JUCE_WINDOWS

BuiltInBytes builtInResource(int number) noexcept
{
    // The plug-in's own library, not the program that has loaded it.
    static const char here = 0;
    HMODULE module = nullptr;

    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&here), &module))
        return {};

    // RT_RCDATA and MAKEINTRESOURCE are made of old-style casts.
    constexpr std::uintptr_t rawData = 10;
    const auto resource =
        FindResourceW(module, reinterpret_cast<LPCWSTR>(static_cast<std::uintptr_t>(number)),
                      reinterpret_cast<LPCWSTR>(rawData));
    const auto loaded = resource != nullptr ? LoadResource(module, resource) : nullptr;
    return loaded != nullptr ? BuiltInBytes{LockResource(loaded), SizeofResource(module, resource)}
                             : BuiltInBytes{};
}

#endif

} // namespace quorel
