// SPDX-License-Identifier: GPL-3.0-or-later
// The C library's names for the functions of PlatformSeamMath on Windows: what is linked with this calls them. The
// system's header would define some of these names itself. Compiled without built-in functions, or a function that asks
// for sine and cosine would be turned into a call of itself.
#include "platform/PlatformSeamMath.h"

#if defined(_WIN32)
extern "C"
{
    double sin(double x);
    double cos(double x);
    long double sinl(long double x);
    long double cosl(long double x);

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

    // The library has these in one piece with the one above, and only the whole of it can be replaced.
    void sincos(double x, double* sine, double* cosine)
    {
        *sine = sin(x);
        *cosine = cos(x);
    }

    void sincosl(long double x, long double* sine, long double* cosine)
    {
        *sine = sinl(x);
        *cosine = cosl(x);
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
