// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/ParameterTable.h"

#include "parameters/ParameterCodings.h"

namespace quorel
{

ParameterTable::ParameterTable()
{
    for (auto& linkedValue : linkedValues)
        linkedValue = std::make_unique<MidiLinkedValueObject>();
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
    for (auto& linkedValue : linkedValues)
        linkedValue->deliverPending();
}

} // namespace quorel
