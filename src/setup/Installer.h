// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "setup/InstalledFiles.h"
#include "setup/SetupWords.h"
#include "setup/StandardSettings.h"

#include <array>
#include <utility>
#include <vector>

namespace quorel
{

/** Sets a user up to play: settings, folders, starter instruments, their banks, factory presets, user guide.
    Running it again completes what is missing and leaves alone what the user changed. */
class Installer
{
public:
    /** `source` holds the instruments in "Ostrand", their banks in "Banks", the factory presets in
        "presets" and the user guide in "Help". */
    Installer(UserStore& store, const UserPlaces& places, const juce::File& source, SetupWords words);

    /** Does everything and says so. False where anything failed; the rest is done all the same. */
    bool run(bool restoreRemoved);

    /** Every setting and its value, a line each. */
    juce::String describeSettings() const;

private:
    using Counts = std::array<int, 6>;
    /** Files to be copied, each with its place. */
    using Copies = std::vector<std::pair<juce::File, juce::File>>;

    void writeSetting(const StandardSetting& setting);
    void writeVersion();
    void createFolders();
    // All of them in the order of their names; what should be there and isn't is a failure.
    Copies planInstruments();
    Copies planBanks(const juce::String& instrument);
    Copies planPresets() const;
    Copies planGuide() const;
    static Copies copiesOf(const juce::File& from, const juce::File& to, bool withFolders,
                           const juce::String& pattern);
    void announce(const Copies& copies, bool restoreRemoved);
    Counts install(const Copies& copies, bool restoreRemoved);
    void installBanks(const std::vector<Copies>& banks, bool restoreRemoved);
    /** Without a list the next start looks for instruments again, and finds the new ones. */
    void forgetPluginList();
    void saveList();
    void fail(const juce::String& text);

    UserStore& store;
    UserPlaces places;
    juce::File source;
    SetupWords words;
    InstalledFiles files;
    bool succeeded = true;
    bool listFailed = false;
};

} // namespace quorel
