// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/LineFiles.h"

#include "parameters/IntegerLines.h"
#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "platform/Leftovers.h"
#include "platform/PlatformSeamFiles.h"
#include "platform/UserInteraction.h"

namespace quorel
{

juce::Array<juce::File> LineFiles::list() const
{
    juce::Array<juce::File> found;

    if (folder == juce::File())
        return found;

    removeLeftovers(folder);

    for (const auto& file : folder.findChildFiles(juce::File::findFiles, false, "*"))
        if (file.getFileExtension() == ending)
            found.add(file);

    found.sort();
    return found;
}

juce::File LineFiles::find(const juce::String& fileName) const
{
    for (const auto& file : list())
        if (file.getFileName() == fileName)
            return file;

    return {};
}

bool LineFiles::mayHold(const juce::File& file) const
{
    return folder != juce::File() && reachable(file).getParentDirectory() == folder &&
           file.getFileExtension() == ending;
}

MenuEntries lineFileMenu(const LineFiles& files, const juce::String& resetText,
                         const juce::String& currentName)
{
    MenuEntries menu{MenuEntry::command(lineFileMenuId::reset, resetText),
                     MenuEntry::command(lineFileMenuId::save, "Save " + files.kind),
                     MenuEntry::command(lineFileMenuId::remove, "Delete " + files.kind)};
    const auto found = files.list();

    if (!found.isEmpty())
        menu.push_back(MenuEntry::separator());

    int id = lineFileMenuId::firstFile;

    for (const auto& file : found)
    {
        menu.push_back(
            MenuEntry::command(id++, file.getFileNameWithoutExtension(), file.getFileName() == currentName));
        menu.back().file = file;
    }

    return menu;
}

bool readLinesOf(const LineFiles& files, const juce::File& chosen, int maxLines, juce::StringArray& lines,
                 UserInteraction& user)
{
    if (!files.mayHold(chosen))
        return false;

    const auto result = readIntegerLines(chosen, maxLines, lines);

    if (result.failed())
        user.alert({}, "Could not load " + files.kind + " file: " + chosen.getFullPathName() + " (" +
                           result.getErrorMessage() + ")");

    return result;
}

juce::String saveLinesAs(const LineFiles& files, const juce::String& title, const juce::String& suggestedName,
                         const juce::StringArray& lines, UserInteraction& user)
{
    const auto suggested =
        files.folder == juce::File() ? juce::File() : files.folder.getChildFile(suggestedName + files.ending);
    auto file = user.chooseFileToSave(title, suggested, "*" + files.ending);

    if (file == juce::File())
        return {};

    if (file.getFileExtension() != files.ending)
    {
        file = file.getSiblingFile(file.getFileName() + files.ending);

        // The user has not been asked about the file of that name.
        if (file.existsAsFile() && !user.confirm({}, file.getFileName() + " already exists. Replace ?"))
            return {};
    }

    const auto result = writeIntegerLines(file, lines);

    if (result.wasOk())
        return file.getFileName();

    user.alert({}, "Could not save " + files.kind + " file: " + file.getFullPathName() + " (" +
                       result.getErrorMessage() + ")");
    return {};
}

bool deleteLineFile(const LineFiles& files, const juce::String& fileName, UserInteraction& user)
{
    if (!user.confirm({}, "Delete " + files.kind + "   " + fileName + " ?"))
        return false;

    if (fileName.isEmpty())
    {
        user.alert({}, "No " + files.kind + " file is in use: there is nothing to delete.");
        return false;
    }

    const auto file = childNamed(files.folder, fileName);
    const auto [outcome, reason] =
        discardFile(files.mayHold(file) ? file : juce::File(),
                    [&user](const juce::String& question) { return user.confirm({}, question); });

    if (outcome == Discarded::Outcome::failed)
        user.alert({}, "Could not delete " + files.kind + " file: " + fileName + " (" + reason + ")");

    return outcome == Discarded::Outcome::gone;
}

} // namespace quorel
