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

    /** At start: reads the list file, or scans if that doesn't exist or is shorter than 10 bytes. A longer
        file that isn't XML leaves the list empty and stays as it is. If the list can't be written, the next
        start scans again. */
    void loadOrScan(const juce::File& pluginFolder, const juce::File& pluginListFile, UserInteraction& user);

    /** Empties the list, opens every candidate in the order of the table, sorts, and writes the list file. A
        candidate that is missing or can't be opened adds nothing and stops nothing. With `showProgress` the
        user is told of each. False if the list file can't be written; the list is filled all the same. */
    bool scanPlugins(const juce::File& pluginFolder, const juce::File& pluginListFile, bool showProgress,
                     UserInteraction& user);

    /** The last progress text; empty before the first scan. */
    const juce::String& scanStatus() const noexcept;

private:
    juce::KnownPluginList& knownPlugins;
    std::unique_ptr<juce::AudioPluginFormatManager> formatManager;
    juce::String status;
};

/** Replaces the list by that of a list file, sorted. False, with the list as it was, if the file isn't XML;
    XML of another kind gives an empty list. */
bool readPluginList(const juce::File& pluginListFile, juce::KnownPluginList& knownPlugins);

/** Replaces the list file as a whole and creates missing folders. False if it can't be written: an older file
    then stays. */
bool writePluginList(const juce::File& pluginListFile, const juce::KnownPluginList& knownPlugins);

} // namespace quorel
