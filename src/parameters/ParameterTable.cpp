// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/ParameterTable.h"

#include "parameters/ParameterCodings.h"

namespace quorel
{

MidiLinkedValueObject& ParameterTable::linked(int index)
{
    auto& entry = linkedValues[slotIndex(index)];

    if (auto* object = entry.load(std::memory_order_relaxed))
        return *object;

    auto& object = *ownedLinkedValues.emplace_back(std::make_unique<MidiLinkedValueObject>());
    entry.store(&object, std::memory_order_seq_cst);
    object.setValue(static_cast<double>(clampUnit(values[slotIndex(index)].load(std::memory_order_seq_cst))));
    return object;
}

float ParameterTable::get(int index) const noexcept
{
    return isSlot(index) ? clampUnit(raw(index)) : 0.0f;
}

void ParameterTable::markDirty(int index) noexcept
{
    if (index > 0 && index < numHostParameters)
        dirty[slotIndex(index)].store(true, std::memory_order_relaxed);
}

void ParameterTable::clearDirty() noexcept
{
    for (auto& flag : dirty)
        flag.store(false, std::memory_order_relaxed);
}

void ParameterTable::deliverPending()
{
    for (auto& object : ownedLinkedValues)
        object->deliverPending();
}

} // namespace quorel
