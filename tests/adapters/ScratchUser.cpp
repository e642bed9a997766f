// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScratchUser.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace quorel::test
{

std::string instrumentFile(const std::string& name)
{
    return std::string(OSTRAND_FOLDER) + "/" + name + "/" + name + OSTRAND_SUFFIX;
}

ScratchUser::ScratchUser()
{
    auto pattern = (fs::temp_directory_path() / "quorel-user-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("cannot create " + pattern);
    root = pattern;

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
    value("Banks Path", data / "Banks");
    value("Plug64 List", settings / "Plugins.xml");
    value("x64 Path", OSTRAND_FOLDER);
    file << "</PROPERTIES>\n";

    setenv("XDG_CONFIG_HOME", (root / "config").c_str(), 1);
    setenv("XDG_DATA_HOME", (root / "data").c_str(), 1);
}

ScratchUser::~ScratchUser()
{
    std::error_code ignored; // a leftover in the temporary folder harms nobody
    fs::remove_all(root, ignored);
}

} // namespace quorel::test
