// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/PluginScanner.h"

#include "hosting/InstrumentTable.h"
#include "hosting/PluginFileCheck.h"
#include "platform/PlatformSeam.h"

namespace quorel
{

namespace
{
constexpr juce::int64 shortestListFile = 10;
constexpr const char* scanTitle = "Scanning Plug-Ins";

juce::Array<juce::File> candidates(const juce::File& pluginFolder)
{
    juce::Array<juce::File> files;
    for (const auto& row : instrumentTable)
        files.add(pluginFolder.getChildFile(row.name).getChildFile(row.name + pluginFileEnding()));
    return files;
}

juce::AudioPluginFormat& vstFormat(const juce::AudioPluginFormatManager& manager)
{
    auto* chosen = manager.getFormat(0);
    for (auto* format : manager.getFormats())
        if (format->getName().containsIgnoreCase("vst"))
            chosen = format;
    return *chosen;
}

void sortList(juce::KnownPluginList& list)
{
    list.sort(juce::KnownPluginList::sortAlphabetically, true);
}
} // namespace

PluginScanner::PluginScanner(juce::KnownPluginList& list)
    : knownPlugins(list)
{
}

void PluginScanner::loadOrScan(const juce::File& pluginFolder, const juce::File& pluginListFile,
                               UserInteraction& user)
{
    if (!pluginListFile.existsAsFile() || pluginListFile.getSize() < shortestListFile)
        scanPlugins(pluginFolder, pluginListFile, false, user);
    else
        readPluginList(pluginListFile, knownPlugins);
}

bool PluginScanner::scanPlugins(const juce::File& pluginFolder, const juce::File& pluginListFile,
                                bool showProgress, UserInteraction& user)
{
    const auto report = [&](const juce::String& text)
    {
        status = text;
        if (showProgress)
            user.progress(scanTitle, text);
    };

    formatManager = std::make_unique<juce::AudioPluginFormatManager>();
    formatManager->addFormat(new juce::VSTPluginFormat());
    auto& format = vstFormat(*formatManager);
    knownPlugins.clear();

    report("Scanning folder: " + pluginFolder.getFullPathName());
    // Without a folder the candidates would be taken from the root of the file system.
    if (pluginFolder != juce::File())
    {
        for (const auto& candidate : candidates(pluginFolder))
        {
            juce::OwnedArray<juce::PluginDescription> found;
            const auto path = candidate.getFullPathName();
            if (isWholePluginFile(candidate))
                knownPlugins.scanAndAddFile(path, true, found, format);
            report("Scanning plugin:  " + path);
        }
    }
    sortList(knownPlugins);
    report("Found " + juce::String(knownPlugins.getNumTypes()) + " Ostrand Instruments");

    const bool written = writePluginList(pluginListFile, knownPlugins);
    if (showProgress)
        user.progress(scanTitle, {});
    return written;
}

const juce::String& PluginScanner::scanStatus() const noexcept
{
    return status;
}

bool readPluginList(const juce::File& pluginListFile, juce::KnownPluginList& knownPlugins)
{
    const auto xml = juce::parseXML(pluginListFile);
    if (xml == nullptr)
        return false;
    knownPlugins.recreateFromXml(*xml);
    sortList(knownPlugins);
    return true;
}

bool writePluginList(const juce::File& pluginListFile, const juce::KnownPluginList& knownPlugins)
{
    if (pluginListFile == juce::File() || !pluginListFile.getParentDirectory().createDirectory())
        return false;
    const auto xml = knownPlugins.createXml();
    return xml != nullptr && xml->writeTo(pluginListFile);
}

} // namespace quorel
