// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

// Before a function that the binary offers to others.
#if defined(_WIN32)
#define OSTRAND_EXPORT extern "C" __declspec(dllexport)
#else
#define OSTRAND_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace quorel
{

/** File name of the binary that this code is part of, without folder and extension, in UTF-8. Empty on
    failure. */
std::string ownFileName();

/** A per-user setting in UTF-8, of any length, or empty. On Windows it is a value below HKEY_CURRENT_USER,
    elsewhere a VALUE element named `key\value` in $XDG_CONFIG_HOME/Ostrand/Registry.xml; on Windows, too, in
    config/Ostrand/Registry.xml of $OSTRAND_HOME where that is an absolute path. */
std::string readUserSetting(const std::string& key, const std::string& value);

} // namespace quorel
