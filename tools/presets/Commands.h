// SPDX-License-Identifier: GPL-3.0-or-later
// What `quorel-presets` does, one function a command. Answers go to the standard output, errors to the
// standard error stream, a line each. All return the exit code of the program.
#pragma once

#include "PresetArguments.h"
#include "PresetCheck.h"

#include "common/Tool.h"
#include "presets/PresetEditing.h"
#include "presets/PresetIndex.h"

#include <juce_core/juce_core.h>

#include <optional>
#include <vector>

namespace quorel
{

/** What `list` and `search` print of all that is there. */
struct ListOptions
{
    juce::String text;
    juce::StringArray categories;
    juce::String author;
    int lowestRating = 0;
    PresetQuery::Among among = PresetQuery::Among::all;
    PresetOrder order = PresetOrder::byName;
};

int listPresetsIn(const PresetCollection& collection, const juce::String& folder, const ListOptions& options);

int searchPresets(const PresetCollection& collection, const ListOptions& options);

struct ShowOptions
{
    bool all = false;
    bool json = false;
};

/** `preset` is "Folder/Name" or a file. */
int showPreset(const PresetCollection& collection, const juce::String& preset, const ShowOptions& options);

int listCategories();

int editCategories(const PresetCollection& collection, const juce::String& preset, CategoryChange change,
                   const juce::StringArray& categories);

/** `to` is "Folder/Name", or "Folder/" for the same name. */
int copyTo(const PresetCollection& collection, const juce::String& preset, const juce::String& to,
           bool replace);

/** `to` is a name, or "Folder/Name". */
int renameTo(const PresetCollection& collection, const juce::String& preset, const juce::String& to,
             bool replace);

/** Marks of the user's, which stand in no preset. */
int ratePreset(const PresetCollection& collection, const juce::String& preset, int rating);
int markFavourite(const PresetCollection& collection, const juce::String& preset, bool favourite);

/** What isn't given stays. */
int editNotes(const PresetCollection& collection, const juce::String& preset,
              const std::optional<juce::String>& author, const std::optional<juce::String>& comment);

/** All or none, but for what the disk refuses half way. */
int moveTo(const PresetCollection& collection, const juce::StringArray& presets, const juce::String& folder);

/** To the trash; with `forGood` for good where the trash doesn't take them. */
int deletePresets(const PresetCollection& collection, const juce::StringArray& presets, bool forGood);

/** Each of `what` is a folder, "Folder/Name" or a file; none of them stands for everything. With `strict`
    notes count as errors. */
int verifyPresets(const PresetCollection& collection, const juce::StringArray& what, bool strict);

int exportTo(const PresetCollection& collection, const juce::String& folder, const juce::File& archive,
             bool replace);

int importFrom(const PresetCollection& collection, const juce::File& archive, const juce::String& folder,
               bool replace);

} // namespace quorel
