// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_events/juce_events.h>

#include <utility>

namespace quorel
{

/** Runs `work` on the message thread and returns when it is done: at once where the caller is that thread or
    holds its lock. Hosts call from threads of their own, while instruments may be created and destroyed on
    the message thread alone. Never from the audio thread. */
template <typename Work>
void runOnMessageThread(Work&& work)
{
    auto* manager = juce::MessageManager::getInstance();

    if (manager->existsAndIsLockedByCurrentThread())
    {
        work();
        return;
    }

    manager->callFunctionOnMessageThread(
        [](void* context) -> void*
        {
            (*static_cast<std::remove_reference_t<Work>*>(context))();
            return nullptr;
        },
        &work);
}

} // namespace quorel
