// SPDX-License-Identifier: GPL-3.0-or-later
// ostrand-banks <folder>: writes the factory banks of all instruments below the folder.
#include "StateFormat.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace
{

constexpr const char* usage = "usage: ostrand-banks <folder>\n"
                              "Writes the factory banks of all starter instruments below the folder.\n"
                              "ostrand-banks --help or --version prints this or the version.";

void writeFile(const fs::path& path, const quorel::Bytes& bytes)
{
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path.u8string());
}

void writePrograms(const quorel::FormatOwner& owner, const fs::path& folder, const quorel::FactoryBank& bank)
{
    for (const auto& program : bank.programs)
        writeFile(folder / fs::u8path(quorel::getText(program.name.data(), program.name.size()) + ".fxp"),
                  quorel::writeProgramFile(owner, program));
}

void writeBanks(const quorel::StarterInstrument& info, const fs::path& folder)
{
    const quorel::FormatOwner owner{info.name, info.programsByMidi ? 1 : quorel::programsPerList,
                                    info.parametersPerProgram, &info};
    bool first = true;
    for (const auto& bank : quorel::factoryBanks(info))
    {
        if (info.programsByMidi)
        {
            writePrograms(owner, folder / fs::u8path(bank.name), bank);
            // In bank menus the bank folder itself takes the place of the first folder, so it gets the same
            // sounds.
            if (first)
                writePrograms(owner, folder, bank);
        }
        else
        {
            quorel::InstrumentState state;
            state.programs = bank.programs;
            quorel::setText(state.bankName.data(), quorel::bankNameLength, bank.name);
            writeFile(folder / fs::u8path(bank.name + ".fxb"), quorel::writeBankFile(owner, state));
        }
        first = false;
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::string folder = argc == 2 ? argv[1] : "";
    if (folder == "--help" || folder == "-h" || folder == "--version")
    {
        const bool written = std::puts(folder == "--version" ? "ostrand-banks " OSTRAND_VERSION : usage) >= 0;
        if (written && std::fflush(stdout) == 0)
            return 0;
        std::fputs("ostrand-banks: cannot write the output\n", stderr);
        return 1;
    }
    if (folder.empty() || folder[0] == '-')
    {
        std::fprintf(stderr, "%s\n", usage);
        return 2;
    }
    try
    {
        for (const auto& info : quorel::starterInstruments())
            writeBanks(info, fs::u8path(folder) / info.name);
    }
    catch (const std::exception& problem)
    {
        std::fprintf(stderr, "ostrand-banks: %s\n", problem.what());
        return 1;
    }
    return 0;
}
