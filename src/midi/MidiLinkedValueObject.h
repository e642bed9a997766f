// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "midi/AtomicValueSource.h"
#include "midi/MidiLearner.h"
#include "midi/ValueTransitionThread.h"

#include <memory>

namespace quorel
{

/** The value object behind a parameter: a `juce::Value` that the interface binds to, that any thread may set,
    that can glide, and that MIDI can be tied to.

    The number lives in an atomic of its own. Setting it with `setValueEased` is safe on the audio thread;
    everything that takes memory, a lock or a message (telling the listeners, starting a glide) is left for
    the message thread: at once if the call came there, else at the next `deliverPending`. */
class MidiLinkedValueObject final : public MidiLearner
{
public:
    explicit MidiLinkedValueObject(double initial = 0.0);
    ~MidiLinkedValueObject() override;

    // What a juce::Value does. Message thread, or its lock held.
    juce::var getValue() const { return value.getValue(); }

    void setValue(const juce::var& newValue);
    /** Shares the source of `other`. The number then follows it at each `deliverPending`, and numbers set off
        the message thread reach it there. */
    void referTo(const juce::Value& other);

    void addListener(juce::Value::Listener* listener) { value.addListener(listener); }

    void removeListener(juce::Value::Listener* listener) { value.removeListener(listener); }

    bool refersToSameSourceAs(const juce::Value& other) const { return value.refersToSameSourceAs(other); }

    /** For others that want to refer to this one. */
    const juce::Value& getValueObject() const noexcept { return value; }

    /** The number alone. Any thread, wait-free. */
    double getNumber() const noexcept { return source->load(); }

    /** Sets the number, over `easingTime` seconds if that is above 0. Any thread; off the message thread no
        allocation, lock or system call. */
    void setValueEased(double target);
    /** The same for the number in `target`. Message thread. */
    void setValueEased(const juce::var& target);

    /** Glides to `target`; nothing if it stands there already, at once below 5 ms. A new target continues
        from the present value. Message thread, or its lock held. */
    void startTransition(float target, float seconds);

    /** True while a glide's thread lives. Message thread, or its lock held. */
    bool isInTransition() const { return easing != nullptr && easing->isThreadRunning(); }

    /** Tells the listeners what was set elsewhere and starts the glides asked for elsewhere. Message thread;
        to be called regularly. */
    void deliverPending();

    /** `midiValue` in 127ths, bent by `curve`, onto `minimum` to `maximum`. Any thread. */
    void setValueFromMidi(float midiValue) override;

    /** False: a MIDI value flips `toggled` wherever the value is true. */
    std::atomic<bool> continuous{true};
    std::atomic<bool> toggled{false};

private:
    bool isLinkedElsewhere() const;

    const juce::ReferenceCountedObjectPtr<AtomicValueSource> source;
    const juce::ReferenceCountedObjectPtr<AtomicValueSource> easingSource;
    juce::Value value;
    std::atomic<double> pendingTarget{0.0};
    std::atomic<bool> targetPending{false};
    /** Made at the first glide: few values ever glide. */
    std::unique_ptr<ValueTransitionThread> easing;

public:
    /** Seconds; 0, the default, means no easing. */
    juce::Value easingTime;
    /** ARGB, for display. */
    juce::uint32 colour = MidiLearner::glowColour;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(MidiLinkedValueObject)
};

} // namespace quorel
