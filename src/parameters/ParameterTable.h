// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "midi/MidiLinkedValueObject.h"
#include "parameters/ParameterLayout.h"

#include <array>
#include <atomic>
#include <memory>
#include <vector>

namespace quorel
{

/** The words of the parameter table: values, the flags that tell the editor and the host what changed, and a
    value object for each slot that somebody wants to listen to. It stores; what a write means is the processor's
    business. Any thread, where not stated. */
class ParameterTable
{
public:
    static constexpr bool isSlot(int index) noexcept
    {
        return static_cast<unsigned int>(index) < static_cast<unsigned int>(numParameterSlots);
    }

    /** Clamped to 0 to 1; 0 outside the table. */
    float get(int index) const noexcept;

    /** What is stored, unclamped: a chunk may have brought in anything. `index` must be a slot. */
    float raw(int index) const noexcept { return values[slotIndex(index)].load(std::memory_order_relaxed); }

    /** Stores without further effect. `index` must be a slot. */
    void setRaw(int index, float value) noexcept
    {
        // In one order with `linkedValues`: whoever makes a value object at this moment must see the value, or else
        // `tellLinked` the object.
        values[slotIndex(index)].store(value, std::memory_order_seq_cst);
    }

    /** Stores a value and gives the one that it replaced, both clamped. Of several threads that write the slot
        at once each is given the value of the one before it. `index` must be a slot. */
    float exchange(int index, float value) noexcept;

    /** Marks a change for the editor, after the value is stored. Slot 0 and the last slot never show. */
    void markDirty(int index) noexcept;

    /** True once after each change, and from then on its value is seen. For the editor's pass. */
    bool takeDirty(int index) noexcept
    {
        return dirty[slotIndex(index)].exchange(false, std::memory_order_acquire);
    }

    bool isDirty(int index) const noexcept { return dirty[slotIndex(index)].load(std::memory_order_relaxed); }

    void clearDirty() noexcept;

    /** Marks a change that the host is yet to hear of. The last slot is none of the host's. */
    void markUntold(int index) noexcept;

    /** Calls `tell` with each index marked since, once however often it was marked. One thread at a time. */
    template <typename Tell>
    void takeUntold(Tell&& tell)
    {
        if (!anyUntold.load(std::memory_order_relaxed) || !anyUntold.exchange(false))
            return;

        for (int index = 0; index < numHostParameters; ++index)
            if (untold[slotIndex(index)].exchange(false))
                tell(index);
    }

    /** The value object of a slot, made at the first call and kept as long as the table. Message thread. */
    MidiLinkedValueObject& linked(int index);

    /** Lets the slot's value object, where there is one, glide to the value just stored. */
    void tellLinked(int index) noexcept;

    /** The same without a glide. Message thread. */
    void setLinked(int index);

    /** Message thread: tells listeners of what other threads wrote. */
    void deliverPending();

private:
    /** Tells the slot's value object, where there is one, the latest value. */
    template <typename Tell>
    void tellLatest(int index, Tell&& tell);

    static constexpr size_t slotIndex(int index) noexcept { return static_cast<size_t>(index); }

    std::array<std::atomic<float>, numParameterSlots> values{};
    std::array<std::atomic<bool>, numParameterSlots> dirty{};
    std::array<std::atomic<bool>, numHostParameters> untold{};
    std::atomic<bool> anyUntold{false};
    std::array<std::atomic<MidiLinkedValueObject*>, numParameterSlots> linkedValues{};
    /** Those that have been asked for. Message thread. */
    std::vector<std::unique_ptr<MidiLinkedValueObject>> ownedLinkedValues;
};

} // namespace quorel
