// SPDX-License-Identifier: GPL-3.0-or-later
// JUCE includes this second header after aeffect.h: everything stands there already.
#pragma once

#include "aeffect.h"
