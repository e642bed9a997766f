// SPDX-License-Identifier: GPL-3.0-or-later
// What a bank folder holds, in the order in which banks and programs are numbered. The host's menus and the
// instruments must count alike, or another program plays than the one chosen: both use this, and so it needs
// the standard library alone. Not for the audio thread.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace quorel
{

/** Banks of a folder and programs of a bank that a MIDI data byte can choose from. */
constexpr std::size_t mostBankEntries = 128;

/** Name of bank 0 where banks are folders: it stands for the bank folder itself. */
constexpr const char* rootBankName = "Root Folder";

/** Sub-folders, sorted. Empty for a folder that can't be read, like the two below. */
std::vector<std::string> listBankFolders(const std::filesystem::path& folder);

/** Names of the ".fxb" files with their ending, sorted with it: "Lead 2.fxb" stands before "Lead.fxb". */
std::vector<std::string> listBankFiles(const std::filesystem::path& folder);

/** What menus and the instrument itself call a bank: its name up to the first dot. A name that starts with a
    dot counts as empty. */
std::string bankTitle(const std::string& name);

/** A ".fxp" file of a bank that is a folder. */
struct ProgramFile
{
    /** The file's name without its ending. */
    std::string name;
    std::filesystem::path path;
};

/** The ".fxp" files, sorted by their names without the ending: "Lead" stands before "Lead 2". */
std::vector<ProgramFile> listProgramFiles(const std::filesystem::path& folder);

// All names are UTF-8 and sorted by code point, so that no user's language and no file system changes the
// numbers. Endings count in any letter case. Entries past `mostBankEntries` are left out.

} // namespace quorel
