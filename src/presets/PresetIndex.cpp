// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetIndex.h"

#include "platform/FileNames.h"
#include "presets/PresetFiles.h"
#include "presets/StateChunk.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace quorel
{

namespace
{
/** A menu entry that isn't a preset. */
constexpr const char* placeholderName = "-- Select Preset --";

bool isBetween(juce::juce_wchar character, juce::juce_wchar first, juce::juce_wchar last) noexcept
{
    return character >= first && character <= last;
}

juce::juce_wchar lowerCase(juce::juce_wchar character) noexcept
{
    if (isBetween(character, 'A', 'Z'))
        return character + 32;

    if (character < 0xc0)
        return character;

    // Latin-1, Greek and Cyrillic stand 32 apart, the Cyrillic extensions 80; Latin Extended-A goes in pairs.
    const bool latin1 = isBetween(character, 0xc0, 0xde) && character != 0xd7;
    const bool greek = isBetween(character, 0x391, 0x3a9) && character != 0x3a2;

    if (latin1 || greek || isBetween(character, 0x410, 0x42f))
        return character + 32;

    if (isBetween(character, 0x400, 0x40f))
        return character + 80;

    const bool upperIsEven = isBetween(character, 0x100, 0x137) || isBetween(character, 0x14a, 0x177);
    const bool upperIsOdd = isBetween(character, 0x139, 0x148) || isBetween(character, 0x179, 0x17e);
    // The dotted and the dotless I belong to "i" in Turkish alone.
    const bool turkish = isBetween(character, 0x130, 0x131);

    if (!turkish && ((upperIsEven && character % 2 == 0) || (upperIsOdd && character % 2 == 1)))
        return character + 1;

    return character;
}

/** The text in lower case, as UTF-8: Latin, Greek and Cyrillic letters, whatever the process's locale. */
std::string searchForm(const juce::String& text)
{
    std::string form;
    form.reserve(text.getNumBytesAsUTF8());

    for (auto p = text.getCharPointer(); !p.isEmpty();)
    {
        const auto character = lowerCase(p.getAndAdvance());
        char bytes[4];
        juce::CharPointer_UTF8 end(bytes);
        end.write(character);
        form.append(bytes, static_cast<size_t>(end.getAddress() - bytes));
    }

    return form;
}

/** What a preset's file says of itself, without most of it being read. */
void readFileOf(const juce::File& file, PresetIndexEntry& entry)
{
    constexpr size_t categoriesOffset = chunkOffset::parameter(firstCategoryParameter);
    std::array<char, categoriesOffset + sizeof(float) * numCategoryParameters> head{};
    juce::FileInputStream stream(file);

    if (stream.openedOk())
        stream.read(head.data(), static_cast<int>(head.size()));

    std::array<float, numCategoryParameters> values{};

    for (size_t i = 0; i < values.size(); ++i)
    {
        const juce::uint32 bits =
            juce::ByteOrder::littleEndianInt(head.data() + categoriesOffset + sizeof(float) * i);
        std::memcpy(&values[i], &bits, sizeof(float));
    }

    entry.flags = unpackCategories(values);
    const auto size = static_cast<size_t>(stream.openedOk() ? stream.getTotalLength() : 0);
    const auto end = chunkEnd(head.data(), size);

    if (!end || *end == size)
        return;

    std::vector<char> tail(juce::jmin(size - *end, mostNoteBytes));
    const auto wanted = static_cast<int>(tail.size());

    if (size_t length = 0; stream.setPosition(static_cast<juce::int64>(size - tail.size())) &&
                           stream.read(tail.data(), wanted) == wanted)
        entry.notes = notesAtEnd(tail.data(), tail.size(), length);
}

bool fits(const PresetIndexEntry& entry, const PresetQuery& query, const std::string& wantedText,
          const std::string& wantedAuthor)
{
    return (query.folderIndex < 0 || entry.folderIndex == query.folderIndex) &&
           entry.name != placeholderName && entry.searchText.find(wantedText) != std::string::npos &&
           (wantedAuthor.empty() || searchForm(entry.notes.author).find(wantedAuthor) != std::string::npos) &&
           std::equal(query.categories.begin(), query.categories.end(), entry.flags.begin(),
                      [](juce::uint8 want, juce::uint8 has) { return want == 0 || has != 0; });
}

bool fits(const PresetMark& mark, const PresetQuery& query)
{
    return mark.rating >= query.lowestRating &&
           (query.among != PresetQuery::Among::favourites || mark.favourite) &&
           (query.among != PresetQuery::Among::recent || mark.lastUsed > 0);
}

/** Items by a number each, the highest first; those of equal numbers stay as they are. */
template <typename Items, typename NumberOf>
void sortDown(Items& items, NumberOf&& numberOf)
{
    std::vector<std::pair<juce::int64, typename Items::value_type>> keyed;
    keyed.reserve(items.size());

    for (const auto& item : items)
        keyed.push_back({numberOf(item), item});

    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });

    for (size_t i = 0; i < keyed.size(); ++i)
        items[i] = keyed[i].second;
}
} // namespace

void PresetIndex::build(const juce::File& banksFolder)
{
    entries.clear();
    int folderIndex = 0;

    for (const auto& folder : listPresetFolders(banksFolder))
    {
        const auto directory = childNamed(banksFolder, folder);

        for (const auto& name : listPresets(directory))
        {
            PresetIndexEntry entry;
            entry.name = name;
            entry.folder = folder;
            entry.folderIndex = folderIndex;
            const auto file = childNamed(directory, name + presetFileEnding);
            readFileOf(file, entry);
            entry.modified = file.getLastModificationTime().toMilliseconds();
            entry.searchText = searchForm(name + "\n" + entry.notes.author + "\n" + entry.notes.comment);
            entries.push_back(std::move(entry));
        }

        ++folderIndex;
    }
}

std::vector<int> PresetIndex::find(const PresetQuery& query, const PresetMarks& marks,
                                   PresetOrder order) const
{
    const auto text = searchForm(query.text);
    const auto author = searchForm(query.author);
    const auto entryAt = [this](int i) -> const PresetIndexEntry& { return entries[static_cast<size_t>(i)]; };
    const bool asksForMarks = query.lowestRating > 0 || query.among != PresetQuery::Among::all;
    std::vector<int> found;
    found.reserve(entries.size());

    for (size_t i = 0; i < entries.size(); ++i)
        if (fits(entries[i], query, text, author) &&
            (!asksForMarks || fits(marks.get(entries[i].place()), query)))
            found.push_back(static_cast<int>(i));

    if (query.among == PresetQuery::Among::recent)
        sortDown(found, [&](int i) { return marks.get(entryAt(i).place()).lastUsed; });
    else if (order == PresetOrder::byRating)
        sortDown(found, [&](int i) { return marks.get(entryAt(i).place()).rating; });
    else if (order == PresetOrder::byDate)
        sortDown(found, [&](int i) { return entryAt(i).modified; });

    return found;
}

void sortPresets(juce::StringArray& names, const juce::File& folder, PresetOrder order,
                 const PresetMarks& marks)
{
    if (order == PresetOrder::byName)
        return;

    std::vector<juce::String> sorted(names.begin(), names.end());
    sortDown(sorted,
             [&](const juce::String& name) -> juce::int64
             {
                 return order == PresetOrder::byRating ? marks.get({folder.getFileName(), name}).rating
                                                       : childNamed(folder, name + presetFileEnding)
                                                             .getLastModificationTime()
                                                             .toMilliseconds();
             });
    names = juce::StringArray(sorted.data(), static_cast<int>(sorted.size()));
}

} // namespace quorel
