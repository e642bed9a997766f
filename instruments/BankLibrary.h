// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "StateFormat.h"

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

/**
    All banks that the bank folder holds, read at once so that the audio thread can change to any of them. In
   the order of the host's bank menu, whose number comes with controller 32: the names sorted by their bytes.
   With folder banks the place of the first folder belongs to the bank folder itself.
*/
class BankLibrary
{
public:
    /** Reads up to 128 banks of up to 128 programs; an empty or unreadable folder leaves the factory bank. */
    void load(const FormatOwner& owner, const std::string& folder);

    int size() const { return static_cast<int>(banks.size()); }

    /** The bank at a menu place, or null. */
    const Bank* at(int index) const;

    /** The first bank with this name that has programs, or null. */
    const Bank* find(const BankName& name) const;

    /** What a new instrument starts with: the user's bank of the factory bank's name, or the latter. */
    const Bank& initial() const { return initialBank; }

private:
    std::vector<Bank> banks;
    Bank initialBank;
    std::vector<Bank> unlisted; ///< the folder whose place the bank folder took
};

} // namespace quorel
