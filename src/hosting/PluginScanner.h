// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/UserInteraction.h"

#include <juce_audio_processors/juce_audio_processors.h>
#include <memory>

namespace quorel
{

/** Finds the installed instruments. It looks only where the family's table puts them, at
    "<plug-in folder>/<name>/<name>.so" (".dll" on Windows), and keeps what it found in a list file, so that a
    later start need not load them all again. Message thread, because a scan opens the instruments. */
class PluginScanner
{
public:
    /** Fills `list`, which must live as long. */
    explicit PluginScanner(juce::KnownPluginList& list);

    /** At start: reads the list file, or scans where there is none or it isn't one. What a process that is
        gone was opening when it ended is passed over from now on, and the user is told. */
    void loadOrScan(const juce::File& pluginFolder, const juce::File& pluginListFile, UserInteraction& user);

    /** Empties the list, opens every candidate in the order of the table, those passed over so far too,
        sorts, and writes the list file. A candidate that is missing or can't be opened adds nothing and stops
        nothing. With `showProgress` the user is told of each. False if the list file can't be written, of
        which the user is told; the list is filled all the same. */
    bool scanPlugins(const juce::File& pluginFolder, const juce::File& pluginListFile, bool showProgress,
                     UserInteraction& user);

    /** The last progress text; empty before the first scan. */
    const juce::String& scanStatus() const noexcept;

private:
    bool scan(const juce::File& pluginFolder, const juce::File& pluginListFile, bool showProgress,
              UserInteraction& user);
    bool write(const juce::File& pluginListFile, UserInteraction& user);

    juce::KnownPluginList& knownPlugins;
    std::unique_ptr<juce::AudioPluginFormatManager> formatManager;
    juce::String status;
};

/** Replaces the list by that of a list file, sorted. False, with the list as it was, if the file isn't the
    whole of one; one without an instrument in it is. */
bool readPluginList(const juce::File& pluginListFile, juce::KnownPluginList& knownPlugins);

/** Replaces the list file as a whole and creates missing folders. False if it can't be written: an older file
    then stays. */
bool writePluginList(const juce::File& pluginListFile, const juce::KnownPluginList& knownPlugins);

} // namespace quorel
