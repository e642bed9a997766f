// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "midi/MidiLinkedValueObject.h"
#include "parameters/ParameterLayout.h"

#include <array>
#include <atomic>
#include <memory>

namespace quorel
{

/** The words of the parameter table: values, the flags that tell the editor what changed, and the value
   objects that its controls bind to. It stores; what a write means is the processor's business. Any thread,
   where not stated. */
class ParameterTable
{
public:
    ParameterTable();

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
        values[slotIndex(index)].store(value, std::memory_order_relaxed);
    }

    /** Marks a change for the editor. Slot 0 and the last slot never show. */
    void markDirty(int index) noexcept;

    /** True once after each change. For the editor's pass. */
    bool takeDirty(int index) noexcept
    {
        return dirty[slotIndex(index)].exchange(false, std::memory_order_relaxed);
    }

    bool isDirty(int index) const noexcept { return dirty[slotIndex(index)].load(std::memory_order_relaxed); }

    void clearDirty() noexcept;

    /** The value object of a slot. Message thread but for `setValueEased`. */
    MidiLinkedValueObject& linked(int index) noexcept { return *linkedValues[slotIndex(index)]; }

    /** Message thread: tells listeners of what other threads wrote. */
    void deliverPending();

private:
    static constexpr size_t slotIndex(int index) noexcept { return static_cast<size_t>(index); }

    std::array<std::atomic<float>, numParameterSlots> values{};
    std::array<std::atomic<bool>, numParameterSlots> dirty{};
    std::array<std::unique_ptr<MidiLinkedValueObject>, numParameterSlots> linkedValues;
};

} // namespace quorel
