// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/BankFolder.h"

#include <algorithm>
#include <string_view>
#include <system_error>

namespace quorel
{

namespace fs = std::filesystem;

namespace
{
bool hasEnding(const std::string& name, std::string_view ending)
{
    const auto sameLetter = [](char a, char b)
    { return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b; };
    return name.size() >= ending.size() &&
           std::equal(ending.begin(), ending.end(), name.end() - static_cast<std::ptrdiff_t>(ending.size()),
                      [&](char wanted, char c) { return sameLetter(c, wanted); });
}

/** Names of all entries that `wanted` takes, in no order. */
template <typename Wanted>
std::vector<std::string> namesIn(const fs::path& folder, Wanted wanted)
{
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
        if (auto name = it->path().filename().u8string(); wanted(*it, name))
            names.push_back(std::move(name));
    return names;
}

std::vector<std::string> filesIn(const fs::path& folder, std::string_view ending)
{
    return namesIn(folder,
                   [ending](const fs::directory_entry& entry, const std::string& name)
                   {
                       std::error_code error;
                       return hasEnding(name, ending) && entry.is_regular_file(error);
                   });
}

/** Bytes of UTF-8 sort like the code points that they encode. */
std::vector<std::string> sorted(std::vector<std::string> names)
{
    std::sort(names.begin(), names.end());
    names.resize(std::min(names.size(), mostBankEntries));
    return names;
}
} // namespace

std::vector<std::string> listBankFolders(const fs::path& folder)
{
    return sorted(namesIn(folder,
                          [](const fs::directory_entry& entry, const std::string&)
                          {
                              std::error_code error;
                              return entry.is_directory(error);
                          }));
}

std::vector<std::string> listBankFiles(const fs::path& folder)
{
    return sorted(filesIn(folder, ".fxb"));
}

std::string bankTitle(const std::string& name)
{
    return name.substr(0, name.find('.'));
}

std::vector<ProgramFile> listProgramFiles(const fs::path& folder)
{
    constexpr std::string_view ending = ".fxp";
    std::vector<ProgramFile> programs;
    for (const auto& name : filesIn(folder, ending))
        programs.push_back({name.substr(0, name.size() - ending.size()), folder / fs::u8path(name)});
    // Files that differ in their ending's case alone share a name.
    std::sort(programs.begin(), programs.end(),
              [](const ProgramFile& a, const ProgramFile& b)
              { return a.name != b.name ? a.name < b.name : a.path < b.path; });
    programs.resize(std::min(programs.size(), mostBankEntries));
    return programs;
}

} // namespace quorel
