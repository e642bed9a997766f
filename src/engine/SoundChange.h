// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/OutputFade.h"
#include "engine/StateRestore.h"
#include "parameters/ParameterLayout.h"

#include <juce_events/juce_events.h>

#include <array>
#include <atomic>
#include <memory>
#include <optional>

namespace quorel
{

class PluginProcessor;
struct SoundMoment;
struct WantedSound;
struct HandOver;

/** Every way in which one sound takes the place of another: a preset, with its fade, a project of the host, the
    two sides of a comparison, and an empty preset. `ChangeState` says how one goes on.

    The newest sound asked for wins: it replaces an older one that is still on its way, whoever asked. From the
    moment it is asked for until it plays, it is also what a save gets. Its bytes are read and checked when it is
    asked for, so that what can't be loaded costs nobody the sound that plays. Message thread, where not stated. */
class SoundChange : private juce::AsyncUpdater
{
public:
    /** Of the processor's timer. */
    static constexpr int timerMilliseconds = 50;

    explicit SoundChange(PluginProcessor& pluginProcessor);
    ~SoundChange() override;

    /** Starts the road to the preset of these names: fade, load, settle, fade. Where no block has run for
        250 ms it is loaded without the fade. False, with the user told and nothing changed, if its file can't
        be loaded. */
    bool requestPreset(const juce::String& folder, const juce::String& preset);

    /** Loads the file of the session's names at once, without a fade. False as above. */
    bool loadPresetFile();

    /** Takes a project's state: at once, or 2.5 seconds later where a hosted instrument's window has to go away
        first. Bytes that can't be read change nothing, and the user is told. Any thread but the audio thread:
        others than the message thread wait up to 500 ms for that one to begin, then up to 2 s for its end, and
        return; the restore follows. */
    void restore(const void* data, size_t size);

    /** Restores a sound that is compared with another: the preset's names and the MIDI bindings stay. */
    void restoreForComparison(const juce::MemoryBlock& bytes);

    /** Brings back a sound that was the user's before, names and all; MIDI bindings, the page and the host's
        project stay. Instruments that play in both play on. */
    void bringBack(const SoundMoment& moment);

    /** Makes the defaults the sound, without instruments, at once. Names and MIDI bindings stay. */
    void makeEmpty();

    /** Fills `destination` with the newest sound asked for, which is the one that plays unless another is on
        its way. Waits for no other thread. Any thread but the audio thread. */
    void save(juce::MemoryBlock& destination);

    /** From the moment a sound is asked for until its fade-in has finished. */
    bool isUnderWay() const noexcept { return fade.getState() != ChangeState::idle; }

    /** What a host is to see of parameter `index` while a sound is awaited: hosts keep values beside the state, and
        write both back. Nothing where that is the present value. Any thread. */
    std::optional<float> awaitedValue(int index) const noexcept;

    /** Why another sound than the one that plays was asked for; nothing where none is awaited. Any thread. */
    std::optional<ChangeReason> awaitedReason() const;

    /** Gives a moment taken now what belongs to the sound that is awaited, if any: the session takes that over with the
        sound, and has the former one's until then. Message thread. */
    void describeAwaited(SoundMoment& moment) const;

    /** The editor keeps its picture: from a request until the settling time ends. */
    bool holdsDisplay() const noexcept;

    /** The processor's timer. False on a tick that a running wait ends here. */
    bool tick();

    /** Also the audio block's. */
    OutputFade& getFade() noexcept { return fade; }

private:
    using Wanted = std::shared_ptr<const WantedSound>;

    void handleAsyncUpdate() override;
    /** Reads the file of a preset. Null, with the user told, if it can't be loaded. */
    Wanted readPreset(const juce::String& folder, const juce::String& preset);
    /** With the lock held. */
    void publishAwaitedValues();
    /** Makes `sound` the newest; null for none. */
    void setWanted(const Wanted& sound, std::shared_ptr<HandOver> byOtherThread = nullptr);
    Wanted getWanted() const;
    /** Nothing is wanted any more, unless something newer than `loaded` is. */
    bool finish(const Wanted& loaded);
    /** Starts the road to what is wanted. */
    void setOut();
    void setOutToPreset();
    void setOutToState();
    void setOutToMoment(const WantedSound& sound);
    void waitForWindows(bool windowsWereOpen);
    void loadWanted();
    void loadAndSettle();
    void apply(const WantedSound& sound);
    void settle();
    void complain(const juce::String& text);

    PluginProcessor& processor;
    OutputFade fade;
    /** Timer ticks left in `waiting` and `settling`. */
    int waitTicks = 0;
    int settleTicks = 0;

    /** Held for the moment of reading or writing the words below. */
    mutable juce::CriticalSection lock;
    /** The newest sound asked for; null once it plays. */
    Wanted wanted;
    /** Set while a host's thread has asked for `wanted`, and the message thread hasn't taken it up yet. */
    std::shared_ptr<HandOver> handOver;
    /** Written with the lock held, read by any thread: the parameters of `wanted`, and whether there is one. */
    std::array<std::atomic<float>, numHostParameters> awaitedValues{};
    std::atomic<bool> isAwaited{false};
    juce::String complaint;
    /** Counts what happened to `wanted`. */
    unsigned int changes = 0;
};

} // namespace quorel
