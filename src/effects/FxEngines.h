// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/FxMemory.h"
#include "effects/FxTypes.h"

#include <array>

namespace quorel
{
struct FxSlot;

/** How a slot plays one type. Any of the functions may be null. */
struct FxEngine
{
    using Process = void (*)(FxSlot&, const float* x, const float* y, float* wetLeft, float* wetRight, int);

    /** Clears the memory that the type reads, at a change of type or rate. */
    void (*clear)(FxSlot&);

    /** Works the ten parameters into the type's settings. */
    void (*update)(FxSlot&);

    /** Makes the wet signal of at most fxChunk samples from x and y; sample t runs at sampleCount + 1 + t and
        writeCount + 1 + t. Null leaves the wet signal as it stands. */
    Process process;

    /** What `process` writes to. */
    FxMemoryUse use;
};

/** In the order of fxTypes. */
extern const std::array<FxEngine, fxTypeCount> fxEngines;
} // namespace quorel
