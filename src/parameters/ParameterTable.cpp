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
    setLinked(index);
    return object;
}

float ParameterTable::get(int index) const noexcept
{
    return isSlot(index) ? clampUnit(raw(index)) : 0.0f;
}

float ParameterTable::exchange(int index, float value) noexcept
{
    return clampUnit(values[slotIndex(index)].exchange(clampUnit(value), std::memory_order_seq_cst));
}

void ParameterTable::markDirty(int index) noexcept
{
    if (index > 0 && index < numHostParameters)
        dirty[slotIndex(index)].store(true, std::memory_order_release);
}

void ParameterTable::markUntold(int index) noexcept
{
    if (index < 0 || index >= numHostParameters)
        return;

    untold[slotIndex(index)].store(true);
    anyUntold.store(true);
}

template <typename Tell>
void ParameterTable::tellLatest(int index, Tell&& tell)
{
    auto* object = linkedValues[slotIndex(index)].load(std::memory_order_seq_cst);

    if (object == nullptr)
        return;

    const auto present = [this, index]
    { return clampUnit(values[slotIndex(index)].load(std::memory_order_seq_cst)); };

    // Another thread may have stored a newer value before this one came to tell its own: the last to tell is
    // one that has seen no newer value since.
    float told = 0.0f;

    do
    {
        told = present();
        tell(*object, static_cast<double>(told));
    } while (present() != told);
}

void ParameterTable::tellLinked(int index) noexcept
{
    tellLatest(index, [](MidiLinkedValueObject& object, double value) { object.setValueEased(value); });
}

void ParameterTable::setLinked(int index)
{
    tellLatest(index, [](MidiLinkedValueObject& object, double value) { object.setValue(value); });
}

void ParameterTable::clearDirty() noexcept
{
    for (auto& flag : dirty)
        flag.store(false, std::memory_order_relaxed);

    anyUntold.store(false);

    for (auto& flag : untold)
        flag.store(false);
}

void ParameterTable::deliverPending()
{
    for (auto& object : ownedLinkedValues)
        object->deliverPending();
}

} // namespace quorel
