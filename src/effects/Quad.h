// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace quorel
{
/** Four floats that are calculated side by side; most often left and right in the first two lanes. Each lane
   rounds as a plain float does. */
using Quad = float __attribute__((vector_size(16)));
using QuadIndex = int __attribute__((vector_size(16)));

inline Quad quadOf(float x)
{
    return Quad{x, x, x, x};
}

inline Quad loadQuad(const float* p)
{
    Quad v;
    __builtin_memcpy(&v, p, sizeof(v));
    return v;
}

inline void storeQuad(float* p, Quad v)
{
    __builtin_memcpy(p, &v, sizeof(v));
}

inline Quad smaller(Quad a, Quad b)
{
    return a < b ? a : b;
}

inline Quad larger(Quad a, Quad b)
{
    return a > b ? a : b;
}

inline Quad heldTo(Quad x, float limit)
{
    return larger(smaller(x, quadOf(limit)), quadOf(-limit));
}

inline Quad magnitude(Quad x)
{
    return larger(x, -x);
}
} // namespace quorel
