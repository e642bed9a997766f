// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/InstrumentBanks.h"

#include "hosting/InstrumentTable.h"
#include "platform/UserPaths.h"

namespace quorel
{

namespace
{
constexpr const char* rootFolderName = "Root Folder";

constexpr int numBankNameParameters = 38;
constexpr int numMidiProgramDigits = 3;

/** Instruments number their banks by the order of these lists: it must not follow a user's language. */
void sortNames(juce::StringArray& names)
{
    names.sort(false);
}

/** Files with this ending in any letter case, on every platform. */
juce::Array<juce::File> filesIn(const juce::File& folder, const char* ending)
{
    auto files = folder.findChildFiles(juce::File::findFiles, false);
    files.removeIf([ending](const juce::File& file) { return !file.hasFileExtension(ending); });
    return files;
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

    const auto found = folderBanks ? folder.findChildFiles(juce::File::findDirectories, false, "*")
                                   : filesIn(folder, ".fxb");
    if (found.isEmpty())
        return;

    bankNames.clear();
    for (const auto& bank : found)
        bankNames.add(bank.getFileName());
    sortNames(bankNames);
    // Entry 0 stands for the bank folder itself and takes the place of the first folder.
    if (folderBanks)
        bankNames.set(0, rootFolderName);
}

juce::String getBankName(juce::AudioPluginInstance& instance, const juce::String& instrumentName)
{
    const auto* instrument = findInstrument(instrumentName);
    if (instrument == nullptr || instrument->firstBankNameParameter == 0)
        return {};

    const auto& parameters = instance.getParameters();
    juce::String name;
    for (int i = 0; i < numBankNameParameters; ++i)
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

    // The first entry of the menu stands for the bank folder itself.
    const auto bank = bankName == rootFolderName ? folder : folder.getChildFile(bankName);

    for (const auto& program : filesIn(bank, ".fxp"))
        programNames.add(program.getFileNameWithoutExtension());
    sortNames(programNames);
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
        menu.entries.add(name.upToFirstOccurrenceOf(".", false, false));
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
