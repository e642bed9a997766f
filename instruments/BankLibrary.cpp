// SPDX-License-Identifier: GPL-3.0-or-later
#include "BankLibrary.h"

#include "PlatformFiles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace quorel
{

namespace fs = std::filesystem;

namespace
{

constexpr std::size_t mostBanks = 128; // controller values
constexpr std::size_t mostPrograms = 128;
constexpr std::uintmax_t largestFile = 8u << 20;

bool hasExtension(const std::string& name, const std::string& extension)
{
    if (name.size() < extension.size())
        return false;
    auto end = name.substr(name.size() - extension.size());
    if (fileNamesIgnoreCase())
        std::transform(end.begin(), end.end(), end.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return end == extension;
}

/** Names in a folder, sorted by their bytes: files with an extension, or sub-folders if that is empty. */
std::vector<std::string> namesIn(const fs::path& folder, const std::string& extension)
{
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
    {
        std::error_code typeError;
        const auto name = it->path().filename().u8string();
        const bool wanted = extension.empty()
                                ? it->is_directory(typeError)
                                : it->is_regular_file(typeError) && hasExtension(name, extension);
        if (wanted && !typeError)
            names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool readFile(const fs::path& path, Bytes& bytes)
{
    std::error_code error;
    const auto size = fs::file_size(path, error);
    if (error || size > largestFile)
        return false;
    bytes.resize(static_cast<std::size_t>(size));
    std::ifstream file(path, std::ios::binary);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
    return file.gcount() == static_cast<std::streamsize>(size);
}

BankName bankNameOf(const std::string& text)
{
    BankName name{};
    setText(name.data(), bankNameLength, text);
    return name;
}

/** The file name up to its first dot, as the host's menu cuts it; a leading dot doesn't count. */
std::string upToDot(const std::string& name)
{
    const auto dot = name.find('.', 1);
    return name.substr(0, dot);
}

Bank readFolder(const FormatOwner& owner, const fs::path& folder, const std::string& name)
{
    Bank bank;
    bank.name = bankNameOf(name);
    for (const auto& file : namesIn(folder, ".fxp"))
    {
        if (bank.programs.size() == mostPrograms)
            break;
        Program program;
        Bytes bytes;
        program.usable = readFile(folder / fs::u8path(file), bytes) && readProgramFile(owner, bytes, program);
        setText(program.name.data(), program.name.size(), file.substr(0, file.size() - 4));
        bank.programs.push_back(program);
    }
    return bank;
}

} // namespace

void BankLibrary::load(const FormatOwner& owner, const std::string& folderName)
{
    const auto& factory = factoryBanks(*owner.info).front();
    Bank factoryBank;
    factoryBank.name = bankNameOf(factory.name);
    factoryBank.programs = factory.programs;

    banks.clear();
    unlisted.clear();
    const auto folder = fs::u8path(folderName);
    if (folderName.empty())
    {
    }
    else if (owner.info->programsByMidi)
    {
        for (const auto& name : namesIn(folder, {}))
        {
            if (banks.size() == mostBanks)
                break;
            banks.push_back(readFolder(owner, folder / fs::u8path(name), name));
        }
        auto root = readFolder(owner, folder, "Root Folder");
        if (!banks.empty())
        {
            unlisted.push_back(banks.front());
            banks.front() = std::move(root);
        }
        else if (!root.programs.empty())
        {
            banks.push_back(std::move(root));
        }
    }
    else
    {
        for (const auto& name : namesIn(folder, ".fxb"))
        {
            if (banks.size() == mostBanks)
                break;
            Bank bank;
            bank.name = bankNameOf(upToDot(name));
            Bytes bytes;
            if (readFile(folder / fs::u8path(name), bytes))
                readBankFile(owner, bytes, bank.programs);
            banks.push_back(std::move(bank));
        }
    }
    if (banks.empty())
        banks.push_back(factoryBank);
    const auto* own = find(factoryBank.name);
    initialBank = own != nullptr ? *own : factoryBank;
}

const Bank* BankLibrary::at(int index) const
{
    return index >= 0 && index < size() ? &banks[static_cast<std::size_t>(index)] : nullptr;
}

const Bank* BankLibrary::find(const BankName& name) const
{
    for (const auto* list : {&banks, &unlisted})
    {
        for (const auto& bank : *list)
        {
            if (bank.name == name && !bank.programs.empty())
                return &bank;
        }
    }
    return nullptr;
}

} // namespace quorel
