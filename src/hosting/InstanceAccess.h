// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <atomic>

namespace quorel
{

/** Keeps a hosted instrument alive while any thread is inside it.

    The message thread publishes and withdraws the instrument; everyone else goes through a `Use`, which
    counts itself in before it reads the pointer. Before it deletes the instrument, the message thread
    withdraws it and waits until all who counted themselves in have left, so that nothing vanishes under a
    running block. A `Use` costs two atomic additions and never waits.

    All operations here are sequentially consistent on purpose: with weaker ones a user could read the old
    pointer while the message thread reads a count of 0. */
class InstanceAccess
{
public:
    /** Scoped use of the instrument; null while there is none. */
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

    /** Null withdraws the instrument. Message thread. */
    void publish(juce::AudioPluginInstance* plugin) noexcept { published.store(plugin); }

    bool hasInstance() const noexcept { return published.load() != nullptr; }

    /** Returns once nobody is inside. New users may come in meanwhile unless the pointer was withdrawn or a
        flag keeps them out. Message thread, outside any `Use` of its own. */
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
