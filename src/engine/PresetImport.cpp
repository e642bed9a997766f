// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PresetImport.h"

#include "engine/PluginProcessor.h"
#include "platform/FileNames.h"
#include "presets/FolderArchive.h"
#include "presets/PresetEditing.h"
#include "presets/PresetNames.h"

namespace quorel
{

namespace
{
constexpr const char* archiveEndings = "zip";
constexpr const char* songEndings = "mid;midi";
/** Each is written down to the disk while the user waits. */
constexpr int mostPresetsAtOnce = 2000;

juce::String count(int presets)
{
    return juce::String(presets) + (presets == 1 ? " preset" : " presets");
}
} // namespace

bool PresetImport::isWanted(const juce::String& path)
{
    const juce::File file(path);
    return file.hasFileExtension(presetFileEnding) || file.hasFileExtension(archiveEndings) ||
           file.hasFileExtension(songEndings);
}

void PresetImport::take(const juce::StringArray& paths)
{
    const juce::WeakReference<PluginProcessor> alive(&processor);
    juce::Array<juce::File> presets;
    juce::Array<juce::File> archives;
    juce::Array<juce::File> songs;

    for (const auto& path : paths)
    {
        const juce::File file(path);

        if (file.hasFileExtension(presetFileEnding))
            presets.add(file);
        else if (file.hasFileExtension(archiveEndings))
            archives.add(file);
        else if (file.hasFileExtension(songEndings))
            songs.add(file);
    }

    if (!songs.isEmpty())
        takeSong(songs[0]);

    for (const auto& archive : archives)
        if (alive != nullptr)
            takeArchive(archive);

    if (alive != nullptr && !presets.isEmpty())
        takePresets(presets);
}

void PresetImport::takePresets(const juce::Array<juce::File>& files)
{
    const auto& banks = processor.getPaths().banksFolder;
    auto& commands = processor.getPresetCommands();
    juce::Array<juce::File> outside;

    for (const auto& file : files)
        if (folderHolding(banks, file).isEmpty())
            outside.add(file);

    if (outside.isEmpty())
    {
        commands.loadPlace({folderHolding(banks, files[0]), files[0].getFileNameWithoutExtension()});
        return;
    }

    const auto folder = processor.getFolderName();
    const auto what =
        outside.size() == 1 ? "preset " + outside[0].getFileNameWithoutExtension() : count(outside.size());

    if (!childNamed(banks, folder).isDirectory())
        return questions.tell("Folder " + folder + " isn't there. Nothing was imported.");

    if (!questions.confirm("Import " + what + " into folder " + folder + " ?"))
        return;

    std::vector<PresetPlace> imported;

    if (questions.tellFailure("Could not import " + what, importPresets(outside, banks, folder, imported)))
        commands.loadPlace(imported[0]);

    commands.filesChanged();
}

void PresetImport::takeArchive(const juce::File& file)
{
    const auto& banks = processor.getPaths().banksFolder;
    const auto whatFailed = "Could not import " + file.getFileName();
    FolderArchive archive;

    if (!questions.tellFailure(whatFailed, FolderArchive::read(file, archive)))
        return;

    if (archive.numPresets() > mostPresetsAtOnce)
        return questions.tell(file.getFileName() + " holds more than " + juce::String(mostPresetsAtOnce) +
                              " presets. Import it with quorel-presets.");

    const auto isTaken = [&](const juce::String& name) { return childNamed(banks, name).exists(); };
    const auto typed = questions.askName(
        "Import presets", "Enter name of the new folder for " + count(archive.numPresets()) + ":",
        freeName(cleanTypedName(archive.folderName()), isTaken));

    if (!typed)
        return;

    const auto folder = cleanTypedName(*typed);

    if (isTaken(folder))
        questions.tell("Folder " + folder + " already exists. Please select another name");
    else if (questions.tellFailure(whatFailed, archive.importTo(banks, folder)))
        questions.tell(count(archive.numPresets()) + " imported into folder " + folder + ".");

    processor.getPresetCommands().filesChanged();
}

void PresetImport::takeSong(const juce::File& file)
{
    questions.tellFailure("Could not read MIDI file " + file.getFileName(),
                          processor.getMidiInput().getSong().load(file));
    processor.requestEditorRefresh();
}

} // namespace quorel
