// SPDX-License-Identifier: GPL-3.0-or-later
// The folder menu and the preset menu as plain data, whoever shows them. Message thread.
#pragma once

#include "platform/MenuEntries.h"
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
} // namespace presetMenuId

/** The commands for folders, then all folders, the current one ticked. */
MenuEntries makeFolderMenu(const PresetLibrary& library);

/** The commands for presets, then those of the current folder. More than 32 are spread over sub-menus, such
    as "Presets 33 - 64". The current preset is ticked, and so is its sub-menu. */
MenuEntries makePresetMenu(const PresetLibrary& library);

/** Text of a command of the menu by its id; empty for an id that is none. */
juce::String folderCommandOf(int id);
juce::String presetCommandOf(int id);

} // namespace quorel
