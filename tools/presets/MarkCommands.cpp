// SPDX-License-Identifier: GPL-3.0-or-later
// The commands for marks and notes, and for several presets at once.
#include "Commands.h"

#include "platform/FileOperations.h"
#include "presets/PresetEditing.h"
#include "presets/PresetMarks.h"

#include <functional>
#include <iostream>

namespace quorel
{

namespace
{
/** Makes `change` to the marks of a preset, and says what it has then. */
int changeMarks(const PresetCollection& collection, const juce::String& preset, const juce::String& said,
                const std::function<juce::Result(PresetMarks&, const std::vector<PresetPlace>&)>& change)
{
    std::vector<PresetPlace> places;
    if (const auto result = findPlaces(collection, {preset}, places); result.failed())
        return fail(result);
    if (collection.marksFile == juce::File())
        return failWith("only presets in your own banks folder have stars and favourites, not those in " +
                        collection.banksFolder.getFullPathName());
    PresetMarks marks(collection.marksFile);
    if (const auto result = change(marks, places); result.failed())
        return fail(result);
    std::cout << preset << "  " << said << std::endl;
    return exitFine;
}
} // namespace

int ratePreset(const PresetCollection& collection, const juce::String& preset, int rating)
{
    return changeMarks(collection, preset, count(rating, "star"),
                       [rating](PresetMarks& marks, const std::vector<PresetPlace>& places)
                       { return marks.setRating(places, rating); });
}

int markFavourite(const PresetCollection& collection, const juce::String& preset, bool favourite)
{
    return changeMarks(collection, preset, favourite ? "favourite" : "no favourite",
                       [favourite](PresetMarks& marks, const std::vector<PresetPlace>& places)
                       { return marks.setFavourite(places, favourite); });
}

int editNotes(const PresetCollection& collection, const juce::String& preset,
              const std::optional<juce::String>& author, const std::optional<juce::String>& comment)
{
    juce::File file;
    if (const auto result = findPreset(collection, preset, file); result.failed())
        return fail(result);
    PresetDocument document;
    if (const auto result = PresetDocument::open(file, document); result.failed())
        return fail(result);
    auto notes = readPresetNotes(document.bytes());
    notes.author = cleanNote(author.value_or(notes.author), longestAuthor);
    notes.comment = cleanNote(comment.value_or(notes.comment), longestComment);
    if (const auto result = changeNotes(file, notes); result.failed())
        return fail(result);
    std::cout << preset << "\nauthor      " << notes.author << "\ncomment     " << notes.comment << std::endl;
    return exitFine;
}

int moveTo(const PresetCollection& collection, const juce::StringArray& presets, const juce::String& folder)
{
    std::vector<PresetPlace> places;
    if (const auto result = findPlaces(collection, presets, places); result.failed())
        return fail(result);
    if (!listPresetFolders(collection.banksFolder).contains(folder))
        if (const auto result = checkTypedName(folder, "a folder"); result.failed())
            return fail(result);
    if (const auto result = checkMove(collection.banksFolder, places, folder); result.failed())
        return fail(result);
    PresetMarks marks(collection.marksFile);
    for (const auto& from : places)
    {
        const PresetPlace to{folder, from.name};
        if (from == to)
            continue;
        const auto fileOf = [&](const PresetPlace& place)
        { return presetFileFor(collection.banksFolder, place.folder, place.name); };
        if (const auto result = renamePreset(fileOf(from), fileOf(to), to); result.failed())
            return fail(result);
        if (const auto result = marks.presetMoved(from, to); result.failed())
            return fail(result);
        std::cout << from.text() << " -> " << to.text() << std::endl;
    }
    return exitFine;
}

int deletePresets(const PresetCollection& collection, const juce::StringArray& presets, bool forGood)
{
    for (const auto& preset : presets)
        if (const auto folder = preset.trimCharactersAtEnd("/");
            listPresetFolders(collection.banksFolder).contains(folder))
            return failWith(quoted(folder) + " is a folder: name the presets in it that are to go");
    std::vector<PresetPlace> places;
    if (const auto result = findPlaces(collection, presets, places); result.failed())
        return fail(result);
    PresetMarks marks(collection.marksFile);
    for (const auto& place : places)
    {
        bool isLost = false;
        const auto [outcome, reason] =
            discardFile(presetFileFor(collection.banksFolder, place.folder, place.name),
                        [forGood, &isLost](const juce::String&) { return isLost = forGood; });
        if (outcome == Discarded::Outcome::failed)
            return failWith("cannot delete " + quoted(place.text()) + " (" + reason + ")");
        if (outcome == Discarded::Outcome::kept)
            return failWith("the trash doesn't take " + quoted(place.text()) +
                            ": give --for-good to delete it for good");
        if (const auto result = marks.presetGone(place); result.failed())
            return fail(result);
        std::cout << place.text() << (isLost ? "  deleted for good" : "  moved to the trash") << std::endl;
    }
    return exitFine;
}

} // namespace quorel
