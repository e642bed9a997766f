// SPDX-License-Identifier: GPL-3.0-or-later
// The folder menu and the preset menu as plain data, whoever shows them. Message thread.
#pragma once

#include "platform/MenuEntries.h"
#include "presets/PresetFiles.h"
#include "presets/PresetLibrary.h"

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
constexpr const char* savePresetAs = "save preset as";
constexpr const char* copyPreset = "copy preset";
constexpr const char* pastePreset = "paste preset";
} // namespace presetCommand

namespace presetMenuId
{
/** Commands count from 1; behind them come the folders, or the presets. */
constexpr int firstFolder = 5;
constexpr int firstPreset = 7;
/** Of the sub-menus of all folders; no folder has as many presets as lie between the two. */
constexpr int firstInFolders = 1000000;
} // namespace presetMenuId

/** The commands for folders, then all folders, the current one ticked. */
MenuEntries makeFolderMenu(const PresetLibrary& library);

/** The preset menu, and what its rows stand for. */
struct PresetMenu
{
    MenuEntries entries;
    /** By id, from `presetMenuId::firstPreset`. */
    std::vector<PresetPlace> ofFolder;
    /** By id, from `presetMenuId::firstInFolders`. */
    std::vector<PresetPlace> ofAllFolders;
};

/** The commands for presets, then those of the current folder, then all folders with presets as sub-menus.
    More than 32 presets are spread over sub-menus, such as "Presets 33 - 64". The current preset is ticked, and
    so are its sub-menus. */
PresetMenu makePresetMenu(const PresetLibrary& library, const juce::File& banksFolder,
                          const PresetPlace& current);

/** The preset of a row; names are empty for an id that is none. */
PresetPlace presetOfMenu(const PresetMenu& menu, int id);

/** Text of a command of the menu by its id; empty for an id that is none. */
juce::String folderCommandOf(int id);
juce::String presetCommandOf(int id);

} // namespace quorel
