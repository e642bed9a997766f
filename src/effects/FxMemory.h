// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/EffectConstants.h"
#include "effects/FilterCore.h"
#include "effects/ReverbUnit.h"
#include "effects/TapeLine.h"

#include <cstddef>
#include <memory>

namespace quorel
{
/** Where a slot takes its memory, and gives it back with the same number of bytes. What is taken is all zero; best is
    memory that isn't resident before it is used. `take` throws std::bad_alloc. */
struct FxPages
{
    void* (*take)(std::size_t bytes);
    void (*giveBack)(void* pages, std::size_t bytes) noexcept;
};

/** The heap. What it has in use again it has to clear, which makes it resident. */
extern const FxPages heapPages;

/** The cross-coupled combs' inputs and outputs. */
struct CombLines
{
    float inL[combLength], inR[combLength], outL[combLength], outR[combLength];
};

/** Lines of the ensemble's six voices. */
struct EnsembleLines
{
    /** A voice's line, left and right in turn, its first entry again at the end, and some bytes more so that
        the write positions of all lines don't share a cache set. */
    static constexpr int stride = 2 * (fxModLineLength + 1) + 30;

    float voices[6 * stride];
};

/** The reverb's units, and the ring behind them that delays the right channel. */
struct ReverbLines
{
    float auxRing[fxAuxRingLength];
    ReverbCells units[3];
};

/** All lines of a slot. */
struct FxLines
{
    // These outlive a change of type: a type may play what another one has left here.
    float lineL[fxLineLength], lineR[fxLineLength];
    float modLineL[fxModLineLength], modLineR[fxModLineLength];
    FilterComb filterComb;

    /** A type finds its part of this empty when it starts, so that one place does for all of them. */
    union Shared
    {
        float auxRing[fxAuxRingLength];
        CombLines comb;
        EnsembleLines ensemble;
        ReverbLines reverb;
        TapeReel tape;
    } shared;
};

/** What a type writes to while it runs. */
struct FxMemoryUse
{
    bool lines = false;     ///< lineL and lineR
    bool modLines = false;  ///< modLineL and modLineR
    std::size_t shared = 0; ///< bytes at the start of the shared part
};

struct FxLinesDeleter
{
    const FxPages* pages = nullptr;

    void operator()(FxLines* lines) const { pages->giveBack(lines, sizeof(FxLines)); }
};

/** A slot's lines, some 9 MB of address space. They are taken empty when the slot is made, and nothing is written to
    before a type plays: pages that no type has used cost no memory. For that, a line is cleared only if something
    has been written to it since it was cleared last. */
class FxMemory
{
public:
    /** Once, before anything else. `pages` outlives this. */
    void take(const FxPages& pages);

    FxLines* operator->() const { return lines.get(); }

    /** Call before a type runs. */
    void noteUse(const FxMemoryUse& use)
    {
        lineStartsWritten = lineStartsWritten || use.lines;
        modLinesWritten = modLinesWritten || use.modLines;
        sharedWritten = sharedWritten > use.shared ? sharedWritten : use.shared;
    }

    /** Clears the first 16384 samples of both delay lines. */
    void clearLineStarts();

    void clearModLines();

    /** Clears so many bytes at the start of the shared part. */
    void clearShared(std::size_t bytes);

private:
    std::unique_ptr<FxLines, FxLinesDeleter> lines;
    bool lineStartsWritten = false, modLinesWritten = false;
    std::size_t sharedWritten = 0; ///< what lies behind is still empty
};
} // namespace quorel
