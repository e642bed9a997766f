// SPDX-License-Identifier: GPL-3.0-or-later
#include "BankBuilder.h"

#include "SoundBuilder.h"

#include "common/ConsoleInteraction.h"
#include "hosting/InstrumentTable.h"
#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "platform/PlatformSeam.h"
#include "platform/UserPaths.h"
#include "presets/PresetFiles.h"

namespace quorel
{

namespace
{
constexpr double rate = 44100.0;
constexpr int blockSize = 512;
constexpr int longestName = 24;
constexpr const char* textEnding = ".txt";

juce::Result failedAt(const juce::File& file, int line, const juce::String& message)
{
    return juce::Result::fail(file.getFullPathName() + ":" +
                              (line > 0 ? juce::String(line) + ":" : juce::String()) + " " + message);
}

/** Names have to suit every file system, and 32 bytes of the preset. */
bool isPortableName(const juce::String& name)
{
    return name.length() <= longestName && name == name.trim() &&
           name.containsOnly("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXY"
                             "Z0123456789 _-+&()");
}
} // namespace

BankBuilder::BankBuilder(const juce::File& distribution)
    : places(juce::File::getSpecialLocation(juce::File::tempDirectory)
                 .getChildFile("quorel-bank-" + juce::Uuid().toString()))
{
    adoptUserPlaces(places);
    const auto store = makeUserStore(userPlaces(places));
    const auto data = userPlaces(places).dataFolder;
    const auto write = [&](const char* name, const juce::File& file)
    { store->write(pathSetting::key, name, file.getFullPathName()); };
    write(pathSetting::banks, data.getChildFile("Banks"));
    write(pathSetting::layouts, data.getChildFile("Layouts"));
    write(pathSetting::help, data.getChildFile("Help"));
    write(pathSetting::ecs, data.getChildFile("ECS"));
    write(pathSetting::pluginList, data.getChildFile("PluginList.xml"));
    write(pathSetting::pluginFolder, distribution.getChildFile("Ostrand"));
    for (const auto& row : instrumentTable)
        store->write(row.registryKey, row.bankValue,
                     distribution.getChildFile("Banks").getChildFile(row.name).getFullPathName());
}

BankBuilder::~BankBuilder()
{
    places.deleteRecursively();
}

juce::Result BankBuilder::build(const juce::File& file, juce::MemoryBlock& bytes) const
{
    const auto name = file.getFileNameWithoutExtension();
    const auto folder = file.getParentDirectory().getFileName();
    if (!isPortableName(name) || !isPlainName(folder))
        return failedAt(file, 0, "a name has at most 24 plain letters, digits, blanks and _ - + & ( )");

    ConsoleInteraction interaction("quorel-bank");
    const auto processor = std::make_unique<PluginProcessor>(makeUserStore(userPlaces(places)), interaction);
    processor->setNonRealtime(true);
    processor->setRateAndBufferSizeDetails(rate, blockSize);
    processor->prepareToPlay(rate, blockSize);
    try
    {
        buildSound(*processor, readPresetText(file));
    }
    catch (const TextError& error)
    {
        return failedAt(file, error.line, error.what());
    }
    if (interaction.numAlerts() > 0)
        return failedAt(file, 0, "the instrument complained");

    processor->setNames(name, folder);
    processor->resetNames();
    processor->getStateInformation(bytes);
    return juce::Result::ok();
}

bool BankBuilder::buildAll(const juce::File& source, const juce::File& output,
                           const std::function<void(const juce::String&)>& report) const
{
    bool succeeded = true;
    int count = 0;
    auto folders = source.findChildFiles(juce::File::findDirectories, false);
    folders.sort();
    for (const auto& folder : folders)
    {
        auto files = folder.findChildFiles(juce::File::findFiles, false, juce::String("*") + textEnding);
        files.sort();
        for (const auto& file : files)
        {
            ++count;
            juce::MemoryBlock bytes;
            auto result = build(file, bytes);
            const auto target =
                presetFileFor(output, folder.getFileName(), file.getFileNameWithoutExtension());
            if (result.wasOk() && !replaceFile(target, bytes))
                result = juce::Result::fail("cannot write " + target.getFullPathName());
            if (result.failed())
                report(result.getErrorMessage());
            succeeded = succeeded && result.wasOk();
        }
    }
    if (count == 0)
        report("no presets in " + source.getFullPathName());
    return succeeded && count > 0;
}

} // namespace quorel
