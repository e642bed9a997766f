// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/IntegerLines.h"

#include "engine/UserInteraction.h"
#include "presets/PresetFiles.h"

#include <string>

namespace quorel
{

namespace
{
constexpr int maxFileBytes = 65536;
constexpr const char* lineEnd = "\r";
} // namespace

int integerOfLine(const juce::String& line) noexcept
{
    auto text = line.getCharPointer().findEndOfWhitespace();
    const bool negative = *text == '-';

    if (negative)
        ++text;

    int number = 0;

    for (; *text >= '0' && *text <= '9'; ++text)
        number = juce::jmin(largestLineInteger, 10 * number + static_cast<int>(*text - '0'));

    return negative ? -number : number;
}

juce::StringArray readIntegerLines(const juce::File& file, int maxLines)
{
    juce::FileInputStream stream(file);

    if (!stream.openedOk())
        return {};

    std::string text(maxFileBytes, '\0');
    text.resize(static_cast<size_t>(juce::jmax(0, stream.read(text.data(), maxFileBytes))));

    // Whatever the bytes are, only digits and line ends matter.
    for (auto& character : text)
        if (character <= 0)
            character = '?';

    juce::StringArray lines;
    lines.addLines(text);

    // What stands behind the last line end is no line, or may be cut off in the middle of a number.
    if (lines.size() > 0 && (lines[lines.size() - 1].isEmpty() || !stream.isExhausted()))
        lines.remove(lines.size() - 1);

    lines.removeRange(maxLines, lines.size());
    return lines;
}

bool writeIntegerLines(const juce::File& file, const juce::StringArray& lines)
{
    if (file.isDirectory())
        return false;

    const auto text = lines.joinIntoString(lineEnd) + lineEnd;
    return replaceFile(file, juce::MemoryBlock(text.toRawUTF8(), text.getNumBytesAsUTF8()));
}

//==============================================================================================================

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

        // Nobody has been asked about the file of that name.
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
