// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace quorel
{

/** Does for the current user what quorel-setup does, from the installed product and without a word, unless this
    version or a newer one has been set up already. Where no product is found nothing happens. What fails is written
    to "Setup.log" in the user's data folder, as far as that can be written, and is tried again by the next process.
    Waits for another process doing the same. Message thread. */
void setUpAtFirstStart();

/** The lock of all that set up a user whose settings are in this folder. */
juce::File setupLock(const juce::File& settingsFolder);

/** How long to wait for it. */
constexpr int setupPatienceMillis = 20000;

} // namespace quorel
