// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetMarks.h"

#include "platform/FileOperations.h"
#include "platform/SharedFile.h"

#include <algorithm>
#include <utility>

namespace quorel
{

namespace
{
constexpr const char* fileName = "PresetMarks.txt";
constexpr juce::int64 largestFile = 4 * 1024 * 1024;
constexpr const char* favouriteSign = "*";
constexpr const char* noFavouriteSign = "-";

/** A file's name may hold line ends, which a line can't. */
bool isOneLine(const juce::String& text)
{
    return text.isNotEmpty() && !text.containsAnyOf("\r\n");
}

/** One line of the file; false for what makes no sense. */
bool readLine(const juce::String& line, juce::String& preset, PresetMark& mark)
{
    const auto words = juce::StringArray::fromTokens(line.upToFirstOccurrenceOf("/", false, false), " ", {});

    if (words.size() < 4 || !words[0].containsOnly("012345") || words[0].length() != 1 ||
        !words[2].containsOnly("0123456789"))
        return false;

    mark.rating = words[0].getIntValue();
    mark.favourite = words[1] == favouriteSign;
    mark.lastUsed = juce::jmax<juce::int64>(0, words[2].getLargeIntValue());
    preset = line.substring(words[0].length() + words[1].length() + words[2].length() + 3);
    return preset.containsChar('/');
}

/** Lets the oldest uses go. */
void keepRecent(std::map<juce::String, PresetMark>& marks)
{
    std::vector<juce::int64> times;

    for (const auto& entry : marks)
        if (entry.second.lastUsed > 0)
            times.push_back(entry.second.lastUsed);

    if (times.size() <= mostRecentPresets)
        return;

    std::nth_element(times.begin(), times.begin() + mostRecentPresets - 1, times.end(), std::greater<>());
    const auto oldest = times[mostRecentPresets - 1];

    for (auto& entry : marks)
        if (entry.second.lastUsed < oldest)
            entry.second.lastUsed = 0;
}
} // namespace

juce::File presetMarksFile(const UserPaths& paths)
{
    return paths.pluginListFile == juce::File() ? juce::File()
                                                : paths.pluginListFile.getSiblingFile(fileName);
}

PresetMarks::PresetMarks(const juce::File& marksFile)
    : file(marksFile)
{
    read();
}

bool PresetMarks::load()
{
    marks.clear();

    if (file == juce::File() || !file.exists())
        return true;

    juce::MemoryBlock bytes;
    const auto isText = [&bytes]
    {
        return juce::CharPointer_UTF8::isValidString(static_cast<const char*>(bytes.getData()),
                                                     static_cast<int>(bytes.getSize())) &&
               std::find(bytes.begin(), bytes.end(), '\0') == bytes.end();
    };

    if (file.getSize() > largestFile || !readWholeFile(file, bytes) || !isText())
        return false;

    for (const auto& line : juce::StringArray::fromLines(bytes.toString()))
    {
        juce::String preset;
        PresetMark mark;

        if (readLine(line, preset, mark))
            marks[preset] = mark;
    }

    return true;
}

void PresetMarks::read()
{
    load();
}

PresetMark PresetMarks::get(const PresetPlace& preset) const
{
    const auto found = marks.find(preset.text());
    return found != marks.end() ? found->second : PresetMark();
}

juce::Result PresetMarks::store() const
{
    juce::MemoryOutputStream text;

    for (const auto& [preset, mark] : marks)
        text << mark.rating << ' ' << (mark.favourite ? favouriteSign : noFavouriteSign) << ' '
             << mark.lastUsed << ' ' << preset << '\n';

    return replaceFile(file, text.getMemoryBlock());
}

juce::Result PresetMarks::change(const std::function<bool(Marks&)>& edit)
{
    // Nothing to follow is no failure, even where nothing could be written.
    if (Marks none; file == juce::File())
        return edit(none) ? juce::Result::fail("there is no folder for settings") : juce::Result::ok();

    if (const auto made = createFolder(file.getParentDirectory()); made.failed())
        return made;

    const SharedFileLock lock(file);
    const bool isReadable = load();
    const auto before = marks;

    if (!edit(marks))
        return juce::Result::ok();

    auto result = juce::Result::ok();

    if (!isReadable && !keepBrokenCopy(file))
        result = juce::Result::fail(file.getFullPathName() + " can't be read");

    for (auto entry = marks.begin(); entry != marks.end();)
        entry = entry->second.isBlank() || !isOneLine(entry->first) ? marks.erase(entry) : std::next(entry);

    keepRecent(marks);

    if (result.wasOk())
        result = store();

    // What isn't written doesn't count.
    if (result.failed())
        marks = before;

    return result;
}

juce::Result PresetMarks::setRating(const std::vector<PresetPlace>& presets, int rating)
{
    return change(
        [&](Marks& all)
        {
            for (const auto& preset : presets)
                all[preset.text()].rating = juce::jlimit(0, highestRating, rating);

            return true;
        });
}

juce::Result PresetMarks::setFavourite(const std::vector<PresetPlace>& presets, bool favourite)
{
    return change(
        [&](Marks& all)
        {
            for (const auto& preset : presets)
                all[preset.text()].favourite = favourite;

            return true;
        });
}

juce::Result PresetMarks::noteUse(const PresetPlace& preset, juce::Time time)
{
    return change(
        [&](Marks& all)
        {
            all[preset.text()].lastUsed = time.toMilliseconds();
            return true;
        });
}

juce::Result PresetMarks::presetMoved(const PresetPlace& from, const PresetPlace& to)
{
    return change(
        [&](Marks& all)
        {
            if (from == to)
                return false;

            // What lay at the new place has been replaced, marks and all.
            const bool hadOne = all.erase(to.text()) > 0;
            auto moved = all.extract(from.text());

            if (moved.empty())
                return hadOne;

            moved.key() = to.text();
            all.insert(std::move(moved));
            return true;
        });
}

juce::Result PresetMarks::presetGone(const PresetPlace& preset)
{
    return change([&](Marks& all) { return all.erase(preset.text()) > 0; });
}

juce::Result PresetMarks::folderMoved(const juce::String& from, const juce::String& to)
{
    return change(
        [&](Marks& all)
        {
            Marks moved;

            for (const auto& [preset, mark] : all)
                if (preset.startsWith(from + "/"))
                    moved[to + preset.substring(from.length())] = mark;

            for (auto entry = all.begin(); entry != all.end();)
                entry = entry->first.startsWith(from + "/") ? all.erase(entry) : std::next(entry);

            // Where marks of a folder that is gone are left, these take their place.
            const bool isAny = !moved.empty();
            moved.merge(all);
            all.swap(moved);
            return isAny;
        });
}

juce::Result PresetMarks::folderGone(const juce::String& folder)
{
    return change(
        [&](Marks& all)
        {
            const auto before = all.size();

            for (auto entry = all.begin(); entry != all.end();)
                entry = entry->first.startsWith(folder + "/") ? all.erase(entry) : std::next(entry);

            return all.size() != before;
        });
}

} // namespace quorel
