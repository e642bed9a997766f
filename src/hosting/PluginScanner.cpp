// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/PluginScanner.h"

#include "hosting/InstrumentTable.h"
#include "hosting/LoadNote.h"
#include "hosting/PluginFileCheck.h"
#include "platform/FileOperations.h"
#include "platform/FlatXml.h"
#include "platform/PlatformSeam.h"

namespace quorel
{

namespace
{
constexpr const char* scanTitle = "Scanning Plug-Ins";
constexpr const char* listTag = "KNOWNPLUGINS";

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

void passOver(juce::KnownPluginList& list, const juce::String& path)
{
    list.addToBlacklist(path);

    for (const auto& type : list.getTypes())
        if (type.fileOrIdentifier == path)
            list.removeType(type);
}

void tellOfPassedOver(const juce::StringArray& paths, UserInteraction& user)
{
    user.alert("Plug-ins passed over",
               "The program that hosts Quorel ended while it opened these. They are passed over now; sounds "
               "that use them keep their settings.\n\n" +
                   paths.joinIntoString("\n") +
                   "\n\nTo try them again, choose \"Re-scan Plug-Ins\" on the back panel.");
}
} // namespace

PluginScanner::PluginScanner(juce::KnownPluginList& list)
    : knownPlugins(list)
{
}

void PluginScanner::loadOrScan(const juce::File& pluginFolder, const juce::File& pluginListFile,
                               UserInteraction& user)
{
    const bool isKnown = readPluginList(pluginListFile, knownPlugins);
    const auto notes = findLeftNotes(pluginListFile);
    juce::StringArray paths;

    for (const auto& note : notes)
    {
        // A note that was cut short itself says nothing.
        if (note.pluginPath.isEmpty())
            continue;

        passOver(knownPlugins, note.pluginPath);
        paths.addIfNotAlreadyThere(note.pluginPath);
    }

    bool written = true;

    if (!isKnown)
        written = scan(pluginFolder, pluginListFile, false, user);
    else if (!notes.empty())
        written = write(pluginListFile, user);

    // Where the list couldn't take them down, the notes stay for the next start.
    for (const auto& note : notes)
        if (written)
            note.file.deleteFile();

    if (!paths.isEmpty())
        tellOfPassedOver(paths, user);
}

bool PluginScanner::scanPlugins(const juce::File& pluginFolder, const juce::File& pluginListFile,
                                bool showProgress, UserInteraction& user)
{
    knownPlugins.clearBlacklistedFiles();
    return scan(pluginFolder, pluginListFile, showProgress, user);
}

bool PluginScanner::scan(const juce::File& pluginFolder, const juce::File& pluginListFile, bool showProgress,
                         UserInteraction& user)
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

            if (candidate.existsAsFile() && isWholePluginFile(candidate))
            {
                const LoadNote note(pluginListFile, path);
                knownPlugins.scanAndAddFile(path, true, found, format);
            }

            report("Scanning plugin:  " + path);
        }
    }
    sortList(knownPlugins);
    report("Found " + juce::String(knownPlugins.getNumTypes()) + " Ostrand Instruments");

    const bool written = write(pluginListFile, user);
    if (showProgress)
        user.progress(scanTitle, {});
    return written;
}

bool PluginScanner::write(const juce::File& pluginListFile, UserInteraction& user)
{
    const bool written = writePluginList(pluginListFile, knownPlugins);

    if (!written && pluginListFile != juce::File())
        user.alert("Error", "The list of instruments could not be written, and stays as it was:\n\n" +
                                pluginListFile.getFullPathName() +
                                "\n\nIs the disk full? Then make room and choose \"Re-scan Plug-Ins\" on "
                                "the back panel.");

    return written;
}

const juce::String& PluginScanner::scanStatus() const noexcept
{
    return status;
}

bool readPluginList(const juce::File& pluginListFile, juce::KnownPluginList& knownPlugins)
{
    juce::MemoryBlock bytes;
    if (!readWholeFile(pluginListFile, bytes))
        return false;
    const auto xml = parseFlatXml(bytes.toString());
    if (xml == nullptr || !xml->hasTagName(listTag))
        return false;
    knownPlugins.recreateFromXml(*xml);
    sortList(knownPlugins);
    return true;
}

bool writePluginList(const juce::File& pluginListFile, const juce::KnownPluginList& knownPlugins)
{
    const auto xml = knownPlugins.createXml();
    if (xml == nullptr || pluginListFile == juce::File())
        return false;
    const auto text = xml->toString();
    return replaceFile(pluginListFile, juce::MemoryBlock(text.toRawUTF8(), text.getNumBytesAsUTF8()));
}

} // namespace quorel
