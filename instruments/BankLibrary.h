// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "StateFormat.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quorel
{

/** A bank in memory. Without programs (a damaged file) it keeps its place but can't be chosen. */
struct Bank
{
    BankName name{};
    std::vector<Program> programs;
};

/** All banks that the bank folder holds, read at once so that the audio thread can change to any of them.
    They stand in the order of the host's bank menu, whose place controller 32 gives. Where banks are folders,
    the bank folder itself takes the place of the first one. */
class BankLibrary
{
public:
    /** Reads the banks; an empty or unreadable folder leaves the factory bank. */
    void load(const FormatOwner& owner, const std::string& folder);

    int size() const { return static_cast<int>(banks.size()); }

    /** The bank at a place of the menu, from 0; null past the end. */
    const Bank* at(int index) const;

    /** The first bank with this name that has programs, or null. */
    const Bank* find(const BankName& name) const;

    /** What a new instrument starts with: the user's bank that has the factory bank's name, or else the
        factory bank itself. */
    const Bank& initial() const { return initialBank; }

private:
    void loadFolders(const FormatOwner& owner, const std::filesystem::path& folder);
    void loadFiles(const FormatOwner& owner, const std::filesystem::path& folder);

    std::vector<Bank> banks;
    Bank initialBank;
    std::vector<Bank> unlisted; ///< the folder whose place the bank folder took
};

} // namespace quorel
