// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/StoredNames.h"

#include "platform/FileNames.h"
#include "presets/PresetFiles.h"

#include <cstring>

namespace quorel
{

namespace
{
/** A cut at the boundary of a character may leave three bytes of the field free. */
bool mayBeCut(const NameField& field)
{
    constexpr size_t longestGap = 3;
    return std::memchr(field.data(), 0, field.size() - longestGap) == nullptr;
}

/** The name is stored as these bytes, be it cut between characters or within one. */
bool isStoredAs(const juce::String& name, const NameField& field)
{
    const char* bytes = name.toRawUTF8();
    return chunkName(name) == field ||
           (std::strlen(bytes) > field.size() && std::memcmp(bytes, field.data(), field.size()) == 0);
}

juce::StringArray namesStoredAs(const NameField& field, juce::StringArray names)
{
    for (int i = names.size(); --i >= 0;)
        if (!isStoredAs(names[i], field))
            names.remove(i);

    return names;
}
} // namespace

StoredNames resolveNames(const juce::File& banksFolder, const StateChunk& chunk)
{
    StoredNames names{nameOf(chunk.presetField), nameOf(chunk.folderField)};

    if (!mayBeCut(chunk.presetField) && !mayBeCut(chunk.folderField))
        return names;

    const auto folders = namesStoredAs(chunk.folderField, listPresetFolders(banksFolder));
    StoredNames found = names;
    int count = 0;

    for (const auto& folder : folders)
    {
        for (const auto& preset :
             namesStoredAs(chunk.presetField, listPresets(childNamed(banksFolder, folder))))
        {
            found = {preset, folder};
            ++count;
        }
    }

    if (count == 1)
        return found;

    // The preset may be gone, or never have been saved; its folder can still be the only one.
    if (folders.size() == 1)
        names.folder = folders[0];

    return names;
}

} // namespace quorel
