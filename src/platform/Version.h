// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{

/** The product's version, such as "1.1.0". Its one place is the project() line of the top CMakeLists.txt. */
extern const char* const productVersion;

} // namespace quorel
