// SPDX-License-Identifier: GPL-3.0-or-later
#include "BankLibrary.h"

#include "hosting/BankFolder.h"

#include <filesystem>
#include <fstream>

namespace quorel
{

namespace fs = std::filesystem;

namespace
{

constexpr std::uintmax_t largestFile = 8u << 20;

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

Bank readFolder(const FormatOwner& owner, const fs::path& folder, const std::string& name)
{
    Bank bank;
    bank.name = bankNameOf(name);
    for (const auto& file : listProgramFiles(folder))
    {
        Program program;
        Bytes bytes;
        program.usable = readFile(file.path, bytes) && readProgramFile(owner, bytes, program);
        setText(program.name.data(), program.name.size(), file.name);
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
    if (!folderName.empty())
    {
        const auto folder = fs::u8path(folderName);
        if (owner.info->folderBanks)
            loadFolders(owner, folder);
        else
            loadFiles(owner, folder);
    }
    if (banks.empty())
        banks.push_back(factoryBank);
    const auto* own = find(factoryBank.name);
    initialBank = own != nullptr ? *own : factoryBank;
}

void BankLibrary::loadFolders(const FormatOwner& owner, const fs::path& folder)
{
    for (const auto& name : listBankFolders(folder))
        banks.push_back(readFolder(owner, folder / fs::u8path(name), name));
    auto root = readFolder(owner, folder, rootBankName);
    if (!banks.empty())
    {
        unlisted.push_back(std::move(banks.front()));
        banks.front() = std::move(root);
    }
    else if (!root.programs.empty())
    {
        banks.push_back(std::move(root));
    }
}

void BankLibrary::loadFiles(const FormatOwner& owner, const fs::path& folder)
{
    for (const auto& name : listBankFiles(folder))
    {
        Bank bank;
        bank.name = bankNameOf(bankTitle(name));
        Bytes bytes;
        if (readFile(folder / fs::u8path(name), bytes))
            readBankFile(owner, bytes, bank.programs);
        banks.push_back(std::move(bank));
    }
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
