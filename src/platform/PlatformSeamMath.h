// SPDX-License-Identifier: GPL-3.0-or-later
// The float functions that effects and instruments call, with the bits that the GNU C library gives on Linux. There
// nothing but the tests uses them. On Windows they take the place of the C library's own, which are up to twenty times
// as slow and, rarely, one bit off: enough to be heard at last where a phase or a filter runs on.
#pragma once

namespace quorel::portable
{
float exp2(float x);
float exp(float x);
float log(float x);
float log10(float x);
/** Bases that aren't positive and normal are left to the C library's function for doubles. */
float pow(float x, float y);

float sin(float x);
float cos(float x);
void sincos(float x, float& sine, float& cosine);
float tan(float x);
float atan(float x);
float atan2(float y, float x);
} // namespace quorel::portable
