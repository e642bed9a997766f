// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "InstalledFiles.h"
#include "platform/PlatformSeam.h"

#include <array>
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
    Installer(UserStore& store, const UserPlaces& places, const juce::File& source);

    /** Does everything and says so on the standard output; errors go to the standard error stream, a
        line each. False where anything failed; the rest is done all the same. */
    bool run(bool restoreRemoved);

    /** Every setting and its value, for the standard output. */
    juce::String describeSettings() const;

private:
    struct Setting
    {
        juce::String key;
        juce::String name;
        juce::File standard;
    };

    using Counts = std::array<int, 6>;

    std::vector<Setting> ownSettings() const;
    void writeSetting(const Setting& setting);
    void createFolders();
    void installInstruments(bool restoreRemoved);
    /** Without a list the next start looks for instruments again, and finds the new ones. */
    void forgetPluginList();
    void installBanks(const juce::String& instrument, bool restoreRemoved, Counts& counts);
    void installPresets(bool restoreRemoved);
    void installGuide(bool restoreRemoved);
    void installFile(const juce::File& from, const juce::File& to, bool restoreRemoved, Counts& counts);
    void fail(const juce::String& text);

    UserStore& store;
    UserPlaces places;
    juce::File source;
    InstalledFiles files;
    bool succeeded = true;
};

} // namespace quorel
