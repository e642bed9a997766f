// SPDX-License-Identifier: GPL-3.0-or-later
#include "midi/MidiLinkedValueObject.h"

#include <cmath>

namespace quorel
{

namespace
{
/** Below this a glide isn't worth a thread's round. */
constexpr float shortestTransition = 0.005f;

/** True where `v` shows the number of `source` and not another's, to which somebody made it refer. */
bool shows(const juce::Value& v, const AtomicValueSource& source)
{
    // getValueSource() is not const in JUCE; nothing is changed here.
    return &const_cast<juce::Value&>(v).getValueSource() == &source;
}
} // namespace

MidiLinkedValueObject::MidiLinkedValueObject(double initial)
    : source(new AtomicValueSource(initial))
    , easingSource(new AtomicValueSource())
    , value(source.get())
    , easingTime(easingSource.get())
{
}

MidiLinkedValueObject::~MidiLinkedValueObject() = default;

bool MidiLinkedValueObject::isLinkedElsewhere() const
{
    return !shows(value, *source);
}

void MidiLinkedValueObject::setValue(const juce::var& newValue)
{
    value.setValue(newValue);
    if (isLinkedElsewhere())
        source->adopt(static_cast<double>(value.getValue()));
}

void MidiLinkedValueObject::referTo(const juce::Value& other)
{
    value.referTo(other);
    if (isLinkedElsewhere())
        source->adopt(static_cast<double>(value.getValue()));
}

void MidiLinkedValueObject::setValueEased(double target)
{
    const double seconds = easingSource->load();
    const bool onMessageThread = juce::MessageManager::existsAndIsCurrentThread();
    if (seconds > 0.0 && !onMessageThread)
    {
        pendingTarget.store(target, std::memory_order_relaxed);
        targetPending.store(true, std::memory_order_release);
        return;
    }

    // What is set now is newer than a glide that still waits for its start.
    targetPending.store(false, std::memory_order_relaxed);
    if (seconds > 0.0)
        startTransition(static_cast<float>(target), static_cast<float>(seconds));
    else if (onMessageThread)
        setValue(target);
    else
        source->store(target);
}

void MidiLinkedValueObject::setValueEased(const juce::var& target)
{
    setValueEased(static_cast<double>(target));
}

void MidiLinkedValueObject::startTransition(float target, float seconds)
{
    if (static_cast<float>(value.getValue()) == target)
        return;
    if (seconds < shortestTransition)
    {
        setValue(static_cast<double>(target));
        return;
    }
    if (easing == nullptr)
        easing = std::make_unique<ValueTransitionThread>();
    // A host repeats its tempo at every block: that must not stretch the glide without end.
    if (!easing->isHeadingFor(target))
        easing->startTransition(value, target, seconds);
}

void MidiLinkedValueObject::deliverPending()
{
    if (!isLinkedElsewhere())
        source->deliverPending();
    else if (source->takePending())
        value.setValue(source->load());
    else
        source->adopt(static_cast<double>(value.getValue()));

    if (shows(easingTime, *easingSource))
        easingSource->deliverPending();
    else
        easingSource->adopt(static_cast<double>(easingTime.getValue()));

    if (targetPending.load(std::memory_order_relaxed) &&
        targetPending.exchange(false, std::memory_order_acquire))
        startTransition(static_cast<float>(pendingTarget.load(std::memory_order_relaxed)),
                        static_cast<float>(easingSource->load()));
}

void MidiLinkedValueObject::setValueFromMidi(float midiValue)
{
    double x = static_cast<double>(midiValue) / 127.0;
    const double exponent = curve.load(std::memory_order_relaxed);
    if (exponent != 1.0)
        x = std::exp(std::log(x) / exponent);

    const double low = minimum.load(std::memory_order_relaxed);
    const double y = (maximum.load(std::memory_order_relaxed) - low) * x + low;
    if (!continuous.load(std::memory_order_relaxed) && getNumber() != 0.0)
        toggled.store(!toggled.load(std::memory_order_relaxed), std::memory_order_relaxed);
    setValueEased(y);
}

} // namespace quorel
