// SPDX-License-Identifier: GPL-3.0-or-later
// The C library's names for the functions of PlatformSeamMath on Windows: what is linked with this calls them. The
// system's header would define some of these names itself.
#include "platform/PlatformSeamMath.h"

#if defined(_WIN32)
extern "C"
{
    float exp2f(float x)
    {
        return quorel::portable::exp2(x);
    }

    float expf(float x)
    {
        return quorel::portable::exp(x);
    }

    float logf(float x)
    {
        return quorel::portable::log(x);
    }

    float log10f(float x)
    {
        return quorel::portable::log10(x);
    }

    float powf(float x, float y)
    {
        return quorel::portable::pow(x, y);
    }

    float sinf(float x)
    {
        return quorel::portable::sin(x);
    }

    float cosf(float x)
    {
        return quorel::portable::cos(x);
    }

    void sincosf(float x, float* sine, float* cosine)
    {
        quorel::portable::sincos(x, *sine, *cosine);
    }

    float tanf(float x)
    {
        return quorel::portable::tan(x);
    }

    float atanf(float x)
    {
        return quorel::portable::atan(x);
    }

    float atan2f(float y, float x)
    {
        return quorel::portable::atan2(y, x);
    }
}
#endif
