// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/InstrumentBanks.h"

#include "hosting/BankFolder.h"
#include "hosting/InstrumentTable.h"
#include "platform/UserPaths.h"

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
} // namespace

juce::File readBankFolder(const juce::String& instrumentName, const UserStore& store)
{
    const auto setting = bankFolderSetting(instrumentName);
    return setting ? fileOfSetting(store.read(setting->key, setting->valueName)) : juce::File();
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
        // A foreign instrument may answer anything at all: only what gives a printable letter is turned into
        // a number.
        const double scaled = static_cast<double>(value) * 255.9;
        if (!(scaled >= 32.0 && scaled < 128.0))
            break;
        name += juce::String::charToString(static_cast<juce::juce_wchar>(scaled));
    }
    return name;
}

void readProgramNames(const juce::String& instrumentName, const juce::String& bankName,
                      const UserStore& store, juce::StringArray& programNames)
{
    programNames.clear();
    const auto folder = readBankFolder(instrumentName, store);
    if (bankName.isEmpty() || folder == juce::File())
        return;

    const auto bank = bankName == rootBankName ? folder : folder.getChildFile(bankName);
    for (const auto& program : listProgramFiles(pathOf(bank)))
        programNames.add(juce::String::fromUTF8(program.name.c_str()));
}

LayerMenu pluginMenu(const juce::KnownPluginList& knownPlugins, const juce::String& loadedName,
                     const juce::String& missingName)
{
    LayerMenu menu;
    menu.entries.add("no plugin");
    menu.selectedId = 1;
    for (const auto& type : knownPlugins.getTypes())
    {
        menu.entries.add(type.name);
        if (type.name == loadedName)
            menu.selectedId = menu.entries.size();
    }
    if (rowOf(missingName) >= 0)
        menu.text = "Plug-In " + missingName + " is missing";
    return menu;
}

LayerMenu programMenu(juce::AudioPluginInstance& instance, const juce::String& instrumentName,
                      const juce::StringArray& programNames)
{
    LayerMenu menu;
    const auto* instrument = findInstrument(instrumentName);
    if (instrument != nullptr && instrument->programsByMidi)
    {
        const auto current = instance.getProgramName(0);
        for (int i = 0; i < programNames.size(); ++i)
            menu.entries.add(numbered(i, numMidiProgramDigits, programNames[i]));
        menu.selectedId = programNames.indexOf(current) + 1;
        return menu;
    }

    const int numPrograms = instance.getNumPrograms();
    const int numDigits = juce::String(numPrograms).length();
    for (int i = 0; i < numPrograms; ++i)
    {
        const auto name = instance.getProgramName(i);
        menu.entries.add(numbered(i, numDigits, name.isEmpty() ? juce::String("program") : name));
    }
    menu.selectedId = juce::jlimit(0, menu.entries.size(), instance.getCurrentProgram() + 1);
    return menu;
}

LayerMenu bankMenu(const juce::StringArray& bankNames, const juce::String& currentBank)
{
    LayerMenu menu;
    for (const auto& name : bankNames)
        menu.entries.add(juce::String::fromUTF8(bankTitle(name.toStdString()).c_str()));
    const int index = menu.entries.indexOf(currentBank);
    menu.selectedId = index < 0 ? 1 : index + 1;
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
