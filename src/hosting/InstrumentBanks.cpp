// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/InstrumentBanks.h"

#include "hosting/BankFolder.h"
#include "hosting/InstrumentTable.h"
#include "platform/FileNames.h"
#include "platform/UserStore.h"

namespace quorel
{

namespace
{
constexpr int numMidiProgramDigits = 3;

std::filesystem::path pathOf(const juce::File& file)
{
    return std::filesystem::u8path(file.getFullPathName().toRawUTF8());
}

juce::String numbered(int index, int numDigits, const juce::String& name)
{
    return juce::String(index + 1).paddedLeft('0', numDigits) + " " + name;
}

/** Adds an entry whose id is its place, counted from 1. */
void append(MenuEntries& menu, const juce::String& text)
{
    menu.push_back(MenuEntry::command(static_cast<int>(menu.size()) + 1, text));
}

/** Does nothing for an index outside. */
void tick(MenuEntries& menu, int index)
{
    if (juce::isPositiveAndBelow(index, static_cast<int>(menu.size())))
        menu[static_cast<std::size_t>(index)].ticked = true;
}
} // namespace

juce::File readBankFolder(const juce::String& instrumentName, const UserStore& store)
{
    const auto setting = bankFolderSetting(instrumentName);
    const auto path = setting ? store.read(setting->key, setting->valueName) : juce::String();
    // The instruments list it with the standard library's means, which take no other form of a long path.
    return isWholePath(path) ? juce::File(path) : juce::File();
}

void listBanks(const juce::String& instrumentName, const UserStore& store, juce::StringArray& bankNames)
{
    const auto folder = readBankFolder(instrumentName, store);
    const auto* instrument = findInstrument(instrumentName);
    const bool folderBanks = instrument != nullptr && instrument->folderBanks;
    if (!folder.isDirectory())
        return;

    const auto found = folderBanks ? listBankFolders(pathOf(folder)) : listBankFiles(pathOf(folder));
    if (found.empty())
        return;

    bankNames.clear();
    for (const auto& bank : found)
        bankNames.add(juce::String::fromUTF8(bank.c_str()));
    // Entry 0 stands for the bank folder itself and takes the place of the first folder.
    if (folderBanks)
        bankNames.set(0, rootBankName);
}

juce::String getBankName(juce::AudioPluginInstance& instance, const juce::String& instrumentName)
{
    const auto* instrument = findInstrument(instrumentName);
    if (instrument == nullptr || instrument->firstBankNameParameter == 0)
        return {};

    const auto& parameters = instance.getParameters();
    juce::String name;
    for (int i = 0; i < bankNameLength; ++i)
    {
        const auto* parameter = parameters[instrument->firstBankNameParameter + i];
        const float value = parameter == nullptr ? 0.0f : parameter->getValue();
        // An instrument may answer anything, even NaN, which must not be cast: only values of printable
        // characters get that far.
        const double scaled = static_cast<double>(value) * 255.9;
        if (!(scaled >= 32.0 && scaled < 128.0))
            break;
        name += juce::String::charToString(static_cast<juce::juce_wchar>(scaled));
    }
    return name;
}

juce::File bankFolder(const juce::String& instrumentName, const juce::String& bankName,
                      const UserStore& store)
{
    const auto folder = readBankFolder(instrumentName, store);
    if (bankName.isEmpty() || folder == juce::File())
        return {};

    return bankName == rootBankName ? folder : folder.getChildFile(bankName);
}

void readProgramNames(const juce::String& instrumentName, const juce::String& bankName,
                      const UserStore& store, juce::StringArray& programNames)
{
    programNames.clear();
    const auto bank = bankFolder(instrumentName, bankName, store);
    if (bank == juce::File())
        return;

    for (const auto& program : listProgramFiles(pathOf(bank)))
        programNames.add(juce::String::fromUTF8(program.name.c_str()));
}

MenuEntries pluginMenu(const juce::KnownPluginList& knownPlugins, const juce::String& loadedName)
{
    MenuEntries menu{MenuEntry::command(1, "no plugin")};
    int selected = 0;
    for (const auto& type : knownPlugins.getTypes())
    {
        if (type.name == loadedName)
            selected = static_cast<int>(menu.size());
        append(menu, type.name);
    }
    tick(menu, selected);
    return menu;
}

juce::String missingPluginText(const juce::String& name)
{
    return rowOf(name) >= 0 ? "Plug-In " + name + " is missing" : juce::String();
}

MenuEntries programMenu(juce::AudioPluginInstance& instance, const juce::String& instrumentName,
                        const juce::StringArray& programNames)
{
    MenuEntries menu;
    const auto* instrument = findInstrument(instrumentName);
    if (instrument != nullptr && instrument->programsByMidi)
    {
        for (int i = 0; i < programNames.size(); ++i)
            append(menu, numbered(i, numMidiProgramDigits, programNames[i]));
        tick(menu, programNames.indexOf(instance.getProgramName(0)));
        return menu;
    }

    const int numPrograms = instance.getNumPrograms();
    const int numDigits = juce::String(numPrograms).length();
    for (int i = 0; i < numPrograms; ++i)
    {
        const auto name = instance.getProgramName(i);
        append(menu, numbered(i, numDigits, name.isEmpty() ? juce::String("program") : name));
    }
    tick(menu, juce::jmin(instance.getCurrentProgram(), numPrograms - 1));
    return menu;
}

MenuEntries bankMenu(const juce::StringArray& bankNames, const juce::String& currentBank)
{
    MenuEntries menu;
    int selected = 0;
    for (const auto& name : bankNames)
        append(menu, juce::String::fromUTF8(bankTitle(name.toStdString()).c_str()));
    for (auto i = menu.size(); i-- > 0;)
        if (menu[i].text == currentBank)
            selected = static_cast<int>(i);
    tick(menu, selected);
    return menu;
}

juce::MidiMessage programSelectMessage(int id)
{
    return juce::MidiMessage::programChange(1, juce::jlimit(0, 127, id - 1));
}

juce::MidiMessage bankSelectMessage(int id)
{
    return juce::MidiMessage::controllerEvent(1, 32, juce::jlimit(0, 127, id - 1));
}

} // namespace quorel
