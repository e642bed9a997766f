// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/UserPaths.h"
#include "presets/PresetFiles.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <map>
#include <vector>

namespace quorel
{

constexpr int highestRating = 5;
/** Presets that count as recently used. */
constexpr int mostRecentPresets = 50;

/** What one user thinks of a preset. */
struct PresetMark
{
    /** 0 to 5; 0 for none. */
    int rating = 0;
    bool favourite = false;
    /** Milliseconds since 1970; 0 for a preset that isn't among the most recent ones. */
    juce::int64 lastUsed = 0;

    bool isBlank() const noexcept { return rating == 0 && !favourite && lastUsed == 0; }
};

/** Where the marks of a user's presets are kept: beside the list of instruments. */
juce::File presetMarksFile(const UserPaths& paths);

/** Favourites, ratings and recently used presets of one user, in a text file with a line for each preset:
    rating, "*" for a favourite or "-", time of last use, "folder/name". Several instances and programs share it:
    each change is made to the file as it then is, and replaces it as a whole. Lines that make no sense are
    passed over; a file that is no text at all is kept as ".broken" before the next change. Message thread. */
class PresetMarks
{
public:
    explicit PresetMarks(const juce::File& marksFile = {});

    /** Takes the marks as the file has them now. */
    void read();

    PresetMark get(const PresetPlace& preset) const;

    juce::Result setRating(const std::vector<PresetPlace>& presets, int rating);
    juce::Result setFavourite(const std::vector<PresetPlace>& presets, bool favourite);
    juce::Result noteUse(const PresetPlace& preset, juce::Time time);

    // Marks follow their presets. Nothing is written where there are none to follow.
    juce::Result presetMoved(const PresetPlace& from, const PresetPlace& to);
    juce::Result folderMoved(const juce::String& from, const juce::String& to);
    juce::Result presetGone(const PresetPlace& preset);
    juce::Result folderGone(const juce::String& folder);

private:
    using Marks = std::map<juce::String, PresetMark>;

    /** Makes `edit`'s change to what the file holds now; it returns false where there is none to make. */
    juce::Result change(const std::function<bool(Marks&)>& edit);
    /** False for a file that is no list of marks. */
    bool load();
    juce::Result store() const;

    juce::File file;
    /** By "folder/name". */
    Marks marks;
};

} // namespace quorel
