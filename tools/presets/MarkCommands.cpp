// SPDX-License-Identifier: GPL-3.0-or-later
// The commands for marks and notes, and for several presets at once.
#include "Commands.h"

#include "platform/FileOperations.h"
#include "presets/PresetEditing.h"
#include "presets/PresetMarks.h"

#include <iostream>

namespace quorel
{

namespace
{
/** Fails where presets have no marks. */
juce::Result checkMarks(const PresetCollection& collection)
{
    return collection.marksFile == juce::File()
               ? juce::Result::fail(
                     "only presets in your own banks folder have stars and favourites, not those in " +
                     collection.banksFolder.getFullPathName())
               : juce::Result::ok();
}
} // namespace

int ratePreset(const PresetCollection& collection, const juce::String& preset, int rating)
{
    std::vector<PresetPlace> places;
    if (const auto result = findPlaces(collection, {preset}, places); result.failed())
        return fail(result);
    if (const auto result = checkMarks(collection); result.failed())
        return fail(result);
    PresetMarks marks(collection.marksFile);
    if (const auto result = marks.setRating(places, rating); result.failed())
        return fail(result);
    std::cout << preset << "  " << count(rating, "star") << std::endl;
    return exitFine;
}

int markFavourite(const PresetCollection& collection, const juce::String& preset, bool favourite)
{
    std::vector<PresetPlace> places;
    if (const auto result = findPlaces(collection, {preset}, places); result.failed())
        return fail(result);
    if (const auto result = checkMarks(collection); result.failed())
        return fail(result);
    PresetMarks marks(collection.marksFile);
    if (const auto result = marks.setFavourite(places, favourite); result.failed())
        return fail(result);
    std::cout << preset << (favourite ? "  favourite" : "  no favourite") << std::endl;
    return exitFine;
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
