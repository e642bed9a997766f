// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScratchUser.h"

#include "support/HostSeam.h"

#include <fstream>

namespace fs = std::filesystem;

namespace quorel::test
{

std::string instrumentFile(const std::string& name)
{
    return std::string(OSTRAND_FOLDER) + "/" + name + "/" + name + OSTRAND_SUFFIX;
}

ScratchUser::ScratchUser()
    : root(makeScratchFolder())
{
    const auto settings = root / "config" / "Ostrand";
    const auto data = root / "data" / "Ostrand" / "Quorel";
    fs::create_directories(settings);
    fs::create_directories(data);

    std::ofstream file(settings / "Registry.xml");
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n\n<PROPERTIES>\n";
    const auto value = [&file](const char* name, const fs::path& path)
    {
        file << "  <VALUE name=\"SOFTWARE\\Ostrand\\Quorel\\" << name << "\" val=\"" << path.string()
             << "\"/>\n";
    };
    // Nothing but what stands here is to be installed.
    file << "  <VALUE name=\"SOFTWARE\\Ostrand\\Quorel\\Setup Version\" val=\"999\"/>\n";
    value("Banks Path", data / "Banks");
    value("Plug64 List", settings / "Plugins.xml");
    value("x64 Path", OSTRAND_FOLDER);
    file << "</PROPERTIES>\n";

    adoptUser(root);
}

ScratchUser::~ScratchUser()
{
    std::error_code ignored; // a leftover in the temporary folder harms nobody
    fs::remove_all(root, ignored);
}

} // namespace quorel::test
