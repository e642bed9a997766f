// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetMenus.h"

namespace quorel
{

namespace
{
constexpr std::array<const char*, 3> folderCommands{presetCommand::newFolder, presetCommand::renameFolder,
                                                    presetCommand::deleteFolder};
constexpr std::array<const char*, 5> presetCommands{presetCommand::newPreset, presetCommand::renamePreset,
                                                    presetCommand::deletePreset, presetCommand::loadPreset,
                                                    presetCommand::savePreset};

template <size_t size>
std::vector<PresetMenuItem> commandItems(const std::array<const char*, size>& texts)
{
    std::vector<PresetMenuItem> items;

    for (const char* text : texts)
        items.push_back({static_cast<int>(items.size()) + 1, text, false});

    return items;
}

template <size_t size>
juce::String commandOf(const std::array<const char*, size>& texts, int id)
{
    return id >= 1 && id <= static_cast<int>(size) ? juce::String(texts[static_cast<size_t>(id - 1)])
                                                   : juce::String();
}

std::vector<PresetMenuItem> nameItems(const juce::StringArray& names, int first, int end, int firstId,
                                      int ticked)
{
    std::vector<PresetMenuItem> items;

    for (int i = first; i < end; ++i)
        items.push_back({firstId + i, names[i], i == ticked});

    return items;
}
} // namespace

PresetMenu makeFolderMenu(const PresetLibrary& library)
{
    PresetMenu menu;
    menu.commands = commandItems(folderCommands);
    menu.items = nameItems(library.getFolderNames(), 0, library.getFolderCount(), PresetMenu::firstFolderId,
                           library.getCurrentFolderIndex());
    return menu;
}

PresetMenu makePresetMenu(const PresetLibrary& library)
{
    PresetMenu menu;
    menu.commands = commandItems(presetCommands);
    const auto& names = library.getPresetNames();
    const int count = library.getPresetCount();
    const int current = library.getCurrentPresetIndex();

    if (count <= PresetMenu::itemsPerSubMenu)
    {
        menu.items = nameItems(names, 0, count, PresetMenu::firstPresetId, current);
        return menu;
    }

    for (int first = 0; first < count; first += PresetMenu::itemsPerSubMenu)
    {
        const int end = juce::jmin(count, first + PresetMenu::itemsPerSubMenu);
        menu.subMenus.push_back({"Presets " + juce::String(first + 1) + " - " + juce::String(end),
                                 nameItems(names, first, end, PresetMenu::firstPresetId, current)});
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
