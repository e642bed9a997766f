// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <atomic>

namespace quorel
{

/** Keeps a hosted instrument alive while any thread is inside it.

    The message thread publishes and withdraws the instrument; every other use goes through a `Use`, which
    counts itself in before it reads the pointer. Withdrawing waits until all who counted in have left, so
    nothing is deleted under a running block. Counting costs two atomic additions and never waits on the
    user's side.

    All operations here are sequentially consistent on purpose: with weaker ones a user could read the old
    pointer while the message thread reads a count of 0. */
class InstanceAccess
{
public:
    /** Scoped use of the instrument. Null where the layer has none. */
    class Use
    {
    public:
        explicit Use(InstanceAccess& access) noexcept
            : owner(access)
        {
            owner.users.fetch_add(1);
            plugin = owner.published.load();
        }

        ~Use() { owner.users.fetch_sub(1); }

        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;

        juce::AudioPluginInstance* get() const noexcept { return plugin; }

        juce::AudioPluginInstance* operator->() const noexcept { return plugin; }

        explicit operator bool() const noexcept { return plugin != nullptr; }

    private:
        InstanceAccess& owner;
        juce::AudioPluginInstance* plugin;
    };

    void publish(juce::AudioPluginInstance* plugin) noexcept { published.store(plugin); }

    bool hasInstance() const noexcept { return published.load() != nullptr; }

    /** Message thread, outside any `Use` of its own: returns once nobody is inside. New users may come in
        meanwhile unless the pointer is withdrawn or a flag keeps them out. */
    void waitUntilUnused() const noexcept
    {
        while (users.load() != 0)
            juce::Thread::sleep(1);
    }

private:
    std::atomic<juce::AudioPluginInstance*> published{nullptr};
    std::atomic<int> users{0};
};

} // namespace quorel
