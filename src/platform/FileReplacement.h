// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <memory>

namespace quorel
{

class InUseMark;

/** The one way in which a file gets new contents: they are written beside it, down to the disk, and moved to
    its place once their length is right. Whatever goes wrong, a crash or a full disk included, the file holds
    its old contents or the new ones whole.

    A file that is replaced keeps its mode; one that is write-protected is refused. Behind a symbolic link the
    file that it leads to is replaced, and the link stays; links that lead nowhere or round in a circle are
    refused. Missing folders are made. Any thread but the audio thread. */
class FileReplacement
{
public:
    /** Opens the temporary file; `status` says whether that worked. The first in a folder also removes what
        processes that were killed have left there. */
    explicit FileReplacement(const juce::File& file);

    /** Removes the temporary file, if it has not been moved. */
    ~FileReplacement();

    /** What has gone wrong so far, in the system's words. */
    juce::Result status() const;

    /** Takes the contents. Only where `status` is fine after construction. */
    juce::OutputStream& stream() noexcept;

    /** What has been written, to be read back after a flush of the stream. */
    const juce::File& temporaryFile() const noexcept { return temporary; }

    /** Moves what was written to its place; once. */
    juce::Result finish();

private:
    class CheckedStream;

    juce::Result open(const juce::File& file);

    juce::File target;
    juce::File temporary;
    std::unique_ptr<InUseMark> mark;
    std::unique_ptr<CheckedStream> output;
    juce::Result opened;

    JUCE_DECLARE_NON_COPYABLE(FileReplacement)
};

/** The file that a new one for `file` replaces: itself, or what its link leads to. Fails where that can't be
    replaced, or isn't a file. */
juce::Result findReplaced(const juce::File& file, juce::File& target);

} // namespace quorel
