// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetIndex.h"

#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "presets/PresetFiles.h"
#include "presets/StateChunk.h"

#include <algorithm>
#include <cstring>
#include <fstream>

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

/** Category values of a preset file, without reading the rest of it. */
std::array<float, numCategoryParameters> readCategoryValues(const juce::File& file)
{
    std::array<char, sizeof(float) * numCategoryParameters> bytes{};
    std::ifstream stream;
    // Unbuffered: twenty-four bytes are needed, not thousands.
    stream.rdbuf()->pubsetbuf(nullptr, 0);
    stream.open(pathOf(file), std::ios::binary);
    stream.seekg(static_cast<std::streamoff>(chunkOffset::parameter(firstCategoryParameter)));
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));

    std::array<float, numCategoryParameters> values{};

    for (size_t i = 0; i < values.size(); ++i)
    {
        const juce::uint32 bits = juce::ByteOrder::littleEndianInt(bytes.data() + sizeof(float) * i);
        std::memcpy(&values[i], &bits, sizeof(float));
    }

    return values;
}

template <typename Matches>
std::vector<int> findEntries(const std::vector<PresetIndexEntry>& entries, int folderIndex, Matches&& matches)
{
    std::vector<int> found;
    found.reserve(entries.size());

    for (size_t i = 0; i < entries.size(); ++i)
        if ((folderIndex < 0 || entries[i].folderIndex == folderIndex) && matches(entries[i]))
            found.push_back(static_cast<int>(i));

    return found;
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
            const auto file = childNamed(directory, name + presetFileEnding);
            entries.push_back(
                {name, folder, folderIndex, unpackCategories(readCategoryValues(file)), searchForm(name)});
        }

        ++folderIndex;
    }
}

std::vector<int> PresetIndex::findText(const juce::String& text, int folderIndex) const
{
    const auto wanted = searchForm(text);
    return findEntries(entries, folderIndex,
                       [&wanted](const PresetIndexEntry& entry) {
                           return entry.name != placeholderName &&
                                  entry.searchName.find(wanted) != std::string::npos;
                       });
}

std::vector<int> PresetIndex::findCategories(const CategoryFlags& wanted, int folderIndex) const
{
    return findEntries(entries, folderIndex,
                       [&wanted](const PresetIndexEntry& entry)
                       {
                           return entry.name != placeholderName &&
                                  std::equal(wanted.begin(), wanted.end(), entry.flags.begin(),
                                             [](juce::uint8 want, juce::uint8 has)
                                             { return want == 0 || has != 0; });
                       });
}

} // namespace quorel
