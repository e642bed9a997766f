// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetMenus.h"

#include "platform/FileNames.h"

#include <utility>

namespace quorel
{

namespace
{
constexpr std::array<const char*, 3> folderCommands{presetCommand::newFolder, presetCommand::renameFolder,
                                                    presetCommand::deleteFolder};
constexpr std::array<const char*, 6> presetCommands{presetCommand::newPreset,    presetCommand::renamePreset,
                                                    presetCommand::deletePreset, presetCommand::loadPreset,
                                                    presetCommand::savePreset,   presetCommand::savePresetAs};

constexpr int presetsPerSubMenu = 32;
static_assert(presetCommands.size() < presetMenuId::firstPreset &&
              folderCommands.size() < presetMenuId::firstFolder);

template <size_t size>
MenuEntries commandEntries(const std::array<const char*, size>& texts)
{
    MenuEntries menu;

    for (const char* text : texts)
        menu.push_back(MenuEntry::command(static_cast<int>(menu.size()) + 1, text));

    menu.push_back(MenuEntry::separator());
    return menu;
}

template <size_t size>
juce::String commandOf(const std::array<const char*, size>& texts, int id)
{
    return id >= 1 && id <= static_cast<int>(size) ? juce::String(texts[static_cast<size_t>(id - 1)])
                                                   : juce::String();
}

/** Rows for a folder's presets, in sub-menus where they are many. `places` takes what the rows stand for, in the
    order of the ids from `firstId`. */
MenuEntries presetRows(const juce::String& folder, const juce::StringArray& names, int firstId,
                       const PresetPlace& current, std::vector<PresetPlace>& places)
{
    MenuEntries all;
    MenuEntries rows;
    bool holdsCurrent = false;
    const int count = names.size();

    for (int i = 0; i < count; ++i)
    {
        const PresetPlace place{folder, names[i]};
        const bool isCurrent = place == current;
        holdsCurrent = holdsCurrent || isCurrent;
        rows.push_back(MenuEntry::command(firstId + static_cast<int>(places.size()), place.name, isCurrent));
        places.push_back(place);

        if (const int number = i + 1;
            count > presetsPerSubMenu && (number % presetsPerSubMenu == 0 || number == count))
        {
            const int first = i - i % presetsPerSubMenu + 1;
            all.push_back(MenuEntry::rows("Presets " + juce::String(first) + " - " + juce::String(number),
                                          std::exchange(rows, {}), std::exchange(holdsCurrent, false)));
        }
    }

    return count > presetsPerSubMenu ? all : rows;
}
} // namespace

MenuEntries makeFolderMenu(const PresetLibrary& library)
{
    auto menu = commandEntries(folderCommands);

    for (int i = 0; i < library.getFolderCount(); ++i)
        menu.push_back(MenuEntry::command(presetMenuId::firstFolder + i, library.getFolderNames()[i],
                                          i == library.getCurrentFolderIndex()));

    return menu;
}

PresetMenu makePresetMenu(const PresetLibrary& library, const juce::File& banksFolder,
                          const PresetPlace& current)
{
    PresetMenu menu{commandEntries(presetCommands), {}, {}};
    auto shown = library.getPresetNames();
    shown.removeRange(library.getPresetCount(), shown.size());

    for (auto& row : presetRows(current.folder, shown, presetMenuId::firstPreset, current, menu.ofFolder))
        menu.entries.push_back(std::move(row));

    bool hasLine = menu.ofFolder.empty();

    for (int i = 0; i < library.getFolderCount(); ++i)
    {
        const auto& folder = library.getFolderNames()[i];
        auto rows = presetRows(folder, listPresets(childNamed(banksFolder, folder)),
                               presetMenuId::firstInFolders, current, menu.ofAllFolders);

        if (rows.empty())
            continue;

        if (!std::exchange(hasLine, true))
            menu.entries.push_back(MenuEntry::separator());

        menu.entries.push_back(MenuEntry::rows(folder, std::move(rows), folder == current.folder));
    }

    return menu;
}

PresetPlace presetOfMenu(const PresetMenu& menu, int id)
{
    const auto at = [id](const std::vector<PresetPlace>& places, int firstId)
    {
        const auto index = static_cast<size_t>(id - firstId);
        return id >= firstId && index < places.size() ? places[index] : PresetPlace();
    };
    return id < presetMenuId::firstInFolders ? at(menu.ofFolder, presetMenuId::firstPreset)
                                             : at(menu.ofAllFolders, presetMenuId::firstInFolders);
}

juce::String folderCommandOf(int id)
{
    return commandOf(folderCommands, id);
}

juce::String presetCommandOf(int id)
{
    return commandOf(presetCommands, id);
}

} // namespace quorel
