// SPDX-License-Identifier: GPL-3.0-or-later
// The folder menu and the preset menu as plain data, whoever shows them. Message thread.
#pragma once

#include "presets/PresetLibrary.h"

#include <optional>
#include <vector>

namespace quorel
{

/** The commands of both menus, by the texts that they are called by. */
namespace presetCommand
{
constexpr const char* newFolder = "new folder";
constexpr const char* renameFolder = "rename folder";
constexpr const char* deleteFolder = "delete folder";
constexpr const char* newPreset = "new preset";
constexpr const char* renamePreset = "rename preset";
constexpr const char* deletePreset = "delete preset";
constexpr const char* loadPreset = "load preset";
constexpr const char* savePreset = "save preset";
constexpr const char* copyPreset = "copy preset";
constexpr const char* pastePreset = "paste preset";
} // namespace presetCommand

struct PresetMenuItem
{
    /** From 1; what the menu gives back. */
    int id;
    juce::String text;
    bool ticked;
};

/** A separator stands between the commands and the rest. */
struct PresetMenu
{
    struct SubMenu
    {
        /** Such as "Presets 33 - 64". */
        juce::String title;
        std::vector<PresetMenuItem> items;
    };

    std::vector<PresetMenuItem> commands;
    /** Folders or presets that stand in the menu itself. */
    std::vector<PresetMenuItem> items;
    /** More presets than 32 are spread over sub-menus instead. */
    std::vector<SubMenu> subMenus;

    static constexpr int firstFolderId = 5;
    static constexpr int firstPresetId = 7;
    static constexpr int itemsPerSubMenu = 32;
};

PresetMenu makeFolderMenu(const PresetLibrary& library);
PresetMenu makePresetMenu(const PresetLibrary& library);

/** Text of a command of the menu by its id; empty for an id that is none. */
juce::String folderCommandOf(int id);
juce::String presetCommandOf(int id);

} // namespace quorel
