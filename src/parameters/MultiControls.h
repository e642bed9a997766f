// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "parameters/ParameterAccess.h"
#include "parameters/ParameterLayout.h"

#include <array>
#include <atomic>
#include <cstddef>

namespace quorel
{

/** Four faders that each move four targets, every target by its own knob's depth and direction.

    Each target keeps a running value that the table doesn't clamp: a sweep may drive it past its end and
    comes back along the same path. At any time that value is base + (knob - 0.5) * 2 * fader, with the base
    taken when the target was assigned. Each move adds only its own share, so knobs and faders may be moved in
    any order, and by several threads at once. */
class MultiControls
{
public:
    /** The list of targets counts from 1 to 72: 18 of layer 1, then those of the next. */
    static constexpr int targetsPerLayer = 18;
    static constexpr int numTargets = targetsPerLayer * numLayers;

    explicit MultiControls(ParameterAccess& parameterTable) noexcept;

    /** Follows a write to slot 1330 to 1369, after the new value is stored. Runs on the writer's thread. */
    void changed(int index, float oldValue, float newValue);

    /** The user has moved `parameter` by its own control: knobs that move it go on from `value`. */
    void rebase(int parameter, float value) noexcept;

    /** Forgets the target of knob `t`, 0 to 15, without touching the table. */
    void forget(int t) noexcept;

    /** Clears every assignment whose target is one of `layer`'s Easy values. */
    void clearEasyTargetsOf(int layer);

    /** Parameter that knob `t` moves, or `noParameter`. */
    int targetParameter(int t) const noexcept { return targetIndex[cell(t)].load(std::memory_order_relaxed); }

    float runningValue(int t) const noexcept { return targetValue[cell(t)].load(std::memory_order_relaxed); }

    /** Parameter of number `listNumber` (from 1) in the list of targets. A damaged preset may hold a number
        past the list, which gives an index outside the layers. */
    static int parameterOfListNumber(int listNumber) noexcept;

    /** What stands behind the table: as it is now, to be brought back together with the parameters. */
    struct Memory
    {
        struct Target
        {
            float value;
            int index;
            float knob;
            float fader;
        };

        std::array<Target, numMultiTargets> targets{};
    };

    Memory getMemory() const noexcept;
    void setMemory(const Memory& memory) noexcept;

    /** While one exists, what its thread writes to knobs, faders and assignments moves nothing: the values of
        all come back from elsewhere. */
    class Still
    {
    public:
        Still() noexcept;
        ~Still();

        Still(const Still&) = delete;
        Still& operator=(const Still&) = delete;
    };

private:
    static constexpr size_t cell(int t) noexcept { return static_cast<size_t>(t); }

    /** Where a target's knob and fader stood at the last move that its running value has taken in. One word, so
        that a knob and a fader that move at once each add their share for where the other one then stands. */
    struct Stand
    {
        float knob;
        float fader;
    };

    static_assert(std::atomic<Stand>::is_always_lock_free, "the audio thread moves targets, too");

    bool isLive(int t) const noexcept;
    void moveTarget(int t, float amount);
    void knobMoved(int t);
    void faderMoved(int group);
    void assignmentChanged(int t, float oldValue, float newValue);

    ParameterAccess& parameters;
    std::array<std::atomic<float>, numMultiTargets> targetValue{};
    std::array<std::atomic<int>, numMultiTargets> targetIndex{};
    std::array<std::atomic<Stand>, numMultiTargets> stands{};
};

} // namespace quorel
