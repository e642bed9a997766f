// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/UserStore.h"

namespace quorel
{

/** Key of this instrument's own settings, and the names of its values. */
namespace pathSetting
{
constexpr const char* key = "SOFTWARE\\Ostrand\\Quorel";
constexpr const char* banks = "Banks Path";
constexpr const char* layouts = "Layouts Path";
constexpr const char* help = "Help Path";
constexpr const char* ecs = "ECS Path";
constexpr const char* pluginList = "Plug64 List";
constexpr const char* pluginFolder = "x64 Path";
/** Percent, such as "150". */
constexpr const char* editorScale = "Editor Scale";
} // namespace pathSetting

/** The folders and files of an installation, as its installer wrote them to the user's settings. A
    setting that is missing or not an absolute path gives an empty file, on which every file operation
    fails quietly. */
struct UserPaths
{
    juce::File banksFolder;
    juce::File layoutsFolder;
    juce::File helpFolder;
    juce::File ecsFolder;
    juce::File pluginListFile;
    /** Already cut with `cutAtOstrand`. */
    juce::File pluginFolder;

    // Folders in the user's application data, whatever the settings say. Nothing here reads them yet.
    juce::File applicationFolder;
    juce::File samplesFolder;
    juce::File downloadsFolder;
    juce::File settingsFolder;
};

/** The path up to and including its last "Ostrand" in any letter case; the whole path where there is none. */
juce::String cutAtOstrand(const juce::String& path);

/** A file of an absolute path; an empty file for anything else. */
juce::File fileOfSetting(const juce::String& path);

/** Reads all paths afresh. Creates nothing. */
UserPaths readPaths(const UserStore& store);

/** Stores the plug-in folder; false where the settings can't be written. */
bool writePluginFolder(UserStore& store, const juce::String& path);

} // namespace quorel
