// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetMenus.h"

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

void addPresets(MenuEntries& menu, const PresetLibrary& library, int first, int end)
{
    for (int i = first; i < end; ++i)
        menu.push_back(MenuEntry::command(presetMenuId::firstPreset + i, library.getPresetNames()[i],
                                          i == library.getCurrentPresetIndex()));
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

MenuEntries makePresetMenu(const PresetLibrary& library)
{
    auto menu = commandEntries(presetCommands);
    const int count = library.getPresetCount();
    const int current = library.getCurrentPresetIndex();

    if (count <= presetsPerSubMenu)
    {
        addPresets(menu, library, 0, count);
        return menu;
    }

    for (int first = 0; first < count; first += presetsPerSubMenu)
    {
        const int end = juce::jmin(count, first + presetsPerSubMenu);
        MenuEntries rows;
        addPresets(rows, library, first, end);
        menu.push_back(MenuEntry::rows("Presets " + juce::String(first + 1) + " - " + juce::String(end),
                                       std::move(rows), current >= first && current < end));
    }

    return menu;
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
