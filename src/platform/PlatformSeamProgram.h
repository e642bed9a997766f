// SPDX-License-Identifier: GPL-3.0-or-later
// What a program of ours does that a plug-in must leave to its host: signals and standard streams.
#pragma once

#include <juce_core/juce_core.h>

#include <string>

namespace quorel
{

/** From now on, Ctrl+C, a polite request to end and a terminal that closes end this process as before, but first
    remove the file of every `FileUntilSignal`. A signal that the caller has switched off stays so. On Windows
    nothing changes. */
void removeFilesAtSignals();

/** Names a file that says something of this process, and is wrong once a user has ended it. A process that hasn't
    called `removeFilesAtSignals`, such as a host, leaves it. Message thread. */
class FileUntilSignal
{
public:
    explicit FileUntilSignal(const juce::File& file);
    ~FileUntilSignal();

private:
    JUCE_DECLARE_NON_COPYABLE(FileUntilSignal)

    const std::string path;
};

/** From now on, the first such signal doesn't end this process, which is to ask for it and to end by itself; a second
    one ends it at once. Takes the place of `removeFilesAtSignals`, and leaves the same signals alone. Where the
    platform sends such requests to windows, nothing changes. */
void catchTermination();

/** True once one has come. Any thread. */
bool isTerminationAsked();

/** Has standard streams that the caller has closed fail, so that no file or pipe is opened in their place and gets
    what is meant for them. Call it before anything is opened. */
void keepStandardStreams();

/** False for a user without a home folder, whose `userPlaces` are nowhere. */
bool hasUserPlaces();

} // namespace quorel
