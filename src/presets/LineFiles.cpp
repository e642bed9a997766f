// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/LineFiles.h"

#include "parameters/IntegerLines.h"
#include "platform/UserInteraction.h"

namespace quorel
{

juce::Array<juce::File> LineFiles::list() const
{
    juce::Array<juce::File> found;

    if (folder == juce::File())
        return found;

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
        menu.push_back(
            MenuEntry::command(id++, file.getFileNameWithoutExtension(), file.getFileName() == currentName));

    return menu;
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

    if (writeIntegerLines(file, lines))
        return file.getFileName();

    user.alert({}, "Could not save " + files.kind + " file: " + file.getFullPathName());
    return {};
}

bool deleteLineFile(const LineFiles& files, const juce::String& fileName, UserInteraction& user)
{
    if (!user.confirm({}, "Delete " + files.kind + "   " + fileName + " ?"))
        return false;

    const auto file = files.find(fileName);
    return file.existsAsFile() && file.deleteFile();
}

} // namespace quorel
