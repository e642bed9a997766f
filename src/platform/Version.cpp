// SPDX-License-Identifier: GPL-3.0-or-later
#include "Version.h"

namespace quorel
{

const char* const productVersion = QUOREL_VERSION;

} // namespace quorel
