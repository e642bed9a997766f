// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/PlatformSeam.h"
#include "platform/PlatformSeamProduct.h"
#include "platform/ValueFile.h"
#include "setup/SetupWords.h"

#include <vector>

namespace quorel
{

/** Links to the product's plug-ins in the folders that a user's hosts search. It remembers the links that it makes,
    in "Links.xml" of the user's data folder, and touches nothing else that stands there. */
class PluginLinks
{
public:
    PluginLinks(const UserPlaces& places, const juce::File& home, const SetupWords& words);

    /** Links all plug-ins that the product has, and says what it did. False where anything failed. */
    bool make(const juce::File& product);

    /** Takes away the links that it has made, and folders that are empty then. The same. */
    bool remove();

private:
    bool makeOne(const juce::File& plugin, const juce::File& link);
    /** True for a link that leads where one of ours was made to. */
    bool isOwn(const juce::File& link) const;
    bool save();

    std::vector<PluginHome> homes;
    juce::File record;
    /** Where each link leads, by its own path. */
    ValueFile links;
    const SetupWords& words;
};

} // namespace quorel
