// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>

namespace quorel::test
{

/** The binary of a starter instrument as built. */
std::string instrumentFile(const std::string& name);

/** A user's folders and settings in a folder of their own, for every plug-in that this process opens while
    the object lives: banks, list of plug-ins, and the built starter instruments as the plug-in folder. */
class ScratchUser
{
public:
    ScratchUser();
    ~ScratchUser();

    ScratchUser(const ScratchUser&) = delete;
    ScratchUser& operator=(const ScratchUser&) = delete;

private:
    const std::filesystem::path root;
};

} // namespace quorel::test
