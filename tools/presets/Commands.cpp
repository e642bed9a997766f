// SPDX-License-Identifier: GPL-3.0-or-later
#include "Commands.h"

#include "ParameterReport.h"

#include "parameters/Categories.h"
#include "platform/FileNames.h"
#include "platform/FileOperations.h"
#include "platform/PlatformSeamFiles.h"
#include "presets/FolderArchive.h"
#include "presets/PresetFiles.h"
#include "presets/PresetIndex.h"
#include "presets/PresetNames.h"

#include <iostream>
#include <set>

namespace quorel
{

namespace
{
bool isFilePath(const juce::String& text)
{
    return juce::File::isAbsolutePath(text) || text.endsWithIgnoreCase(presetFileEnding) ||
           juce::File::getCurrentWorkingDirectory().getChildFile(text).existsAsFile();
}

/** A preset by name or by path. */
juce::Result findPresetOrFile(const PresetCollection& collection, const juce::String& text, juce::File& file)
{
    if (!isFilePath(text))
        return findPreset(collection, text, file);
    file = juce::File::getCurrentWorkingDirectory().getChildFile(text);
    return juce::Result::ok();
}

juce::Result findFlags(const juce::StringArray& categories, std::vector<int>& flags)
{
    for (const auto& category : categories)
    {
        const auto flag = findCategory(category);
        if (!flag.has_value())
            return juce::Result::fail("unknown category " + quoted(category) +
                                      ": see quorel-presets categories list");
        flags.push_back(*flag);
    }
    return juce::Result::ok();
}

void print(const PresetIndexEntry& entry, const PresetMark& mark)
{
    const auto words = categoryWords(entry.flags).joinIntoString(", ");
    std::cout << entry.folder << '/' << entry.name;
    if (words.isNotEmpty())
        std::cout << "  [" << words << ']';
    if (mark.rating > 0)
        std::cout << "  " << count(mark.rating, "star");
    if (mark.favourite)
        std::cout << "  favourite";
    std::cout << '\n';
}

/** False, and the user is told, for a category that there is none of. */
bool makeQuery(const ListOptions& options, PresetQuery& query)
{
    std::vector<int> flags;
    if (const auto result = findFlags(options.categories, flags); result.failed())
    {
        fail(result);
        return false;
    }
    for (const int flag : flags)
        query.categories[static_cast<std::size_t>(flag)] = 1;
    query.text = options.text;
    query.author = options.author;
    query.lowestRating = options.lowestRating;
    query.among = options.among;
    return true;
}

//==============================================================================================================
// Verify

/** A file to look at, and what to call it. */
struct Suspect
{
    juce::File file;
    juce::String title;
    bool isInBanks = false;
};

/** What looks like a preset in a folder, whether lists would show it or not. */
juce::Array<juce::File> presetLikeFiles(const juce::File& folder)
{
    auto files = folder.findChildFiles(juce::File::findFilesAndDirectories, false, "*");
    files.removeIf([](const juce::File& file) { return !file.hasFileExtension(presetFileEnding); });
    files.sort();
    return files;
}

juce::Result addFolder(const juce::File& folder, std::vector<Suspect>& suspects)
{
    if (const auto result = checkListable(folder); result.failed())
        return result;
    for (const auto& file : presetLikeFiles(folder))
        suspects.push_back({file, folder.getFileName() + "/" + file.getFileNameWithoutExtension(), true});
    return juce::Result::ok();
}

/** Fails for what isn't there. Folders that can't be read are listed, and the rest is looked at. */
juce::Result collectSuspects(const PresetCollection& collection, const juce::StringArray& what,
                             std::vector<Suspect>& suspects, juce::StringArray& unreadable)
{
    const auto addOrNote = [&](const juce::File& folder)
    {
        if (const auto result = addFolder(folder, suspects); result.failed())
            unreadable.add(result.getErrorMessage());
    };
    const auto& banks = collection.banksFolder;
    if (what.isEmpty())
    {
        if (const auto result = checkBanks(collection); result.failed())
            return result;
        for (const auto& folder : listPresetFolders(banks))
            addOrNote(childNamed(banks, folder));
        return juce::Result::ok();
    }

    for (const auto& text : what)
    {
        if (isFilePath(text))
        {
            const auto file = juce::File::getCurrentWorkingDirectory().getChildFile(text);
            suspects.push_back({file, file.getFullPathName(), false});
            continue;
        }
        if (const auto name = text.trimCharactersAtEnd("/"); !name.containsChar('/'))
        {
            if (const auto result = checkBanks(collection); result.failed())
                return result;
            const auto folder = childNamed(banks, name);
            if (!folder.isDirectory())
                return juce::Result::fail("there is no folder " + quoted(name) + " in " +
                                          banks.getFullPathName());
            addOrNote(folder);
            continue;
        }
        juce::File file;
        if (const auto result = findPreset(collection, text, file); result.failed())
            return result;
        suspects.push_back({file, text, true});
    }
    return juce::Result::ok();
}

/** Presets that lie where no list looks. */
int reportStrays(const juce::File& banks)
{
    int strays = 0;
    for (const auto& file : presetLikeFiles(banks))
    {
        if (file.isDirectory())
            continue;
        std::cout << file.getFileName() << ": note: isn't listed: it lies outside of any folder\n";
        ++strays;
    }
    return strays;
}
} // namespace

int listPresetsIn(const PresetCollection& collection, const juce::String& folder, const ListOptions& options)
{
    if (const auto result = checkBanks(collection); result.failed())
        return fail(result);
    const auto folders = listPresetFolders(collection.banksFolder);
    if (folder.isNotEmpty() && !folders.contains(folder))
        return failWith("there is no folder " + quoted(folder) + " in " +
                        collection.banksFolder.getFullPathName());

    PresetQuery query;
    if (!makeQuery(options, query))
        return exitUsage;
    PresetIndex index;
    index.build(collection.banksFolder);
    const PresetMarks marks(collection.marksFile);
    int code = exitFine;
    for (query.folderIndex = 0; query.folderIndex < folders.size(); ++query.folderIndex)
    {
        const auto& name = folders[query.folderIndex];
        if (folder.isNotEmpty() && folder != name)
            continue;
        if (const auto result = checkListable(childNamed(collection.banksFolder, name)); result.failed())
        {
            code = fail(result);
            continue;
        }
        const auto found = index.find(query, marks, options.order);
        std::cout << name << "/  (" << count(static_cast<int>(found.size()), "preset") << ")\n";
        for (const int i : found)
            print(index.getEntries()[static_cast<std::size_t>(i)],
                  marks.get(index.getEntries()[static_cast<std::size_t>(i)].place()));
    }
    std::cout << std::flush;
    return code;
}

int searchPresets(const PresetCollection& collection, const ListOptions& options)
{
    PresetQuery query;
    if (!makeQuery(options, query))
        return exitUsage;
    if (const auto result = checkBanks(collection); result.failed())
        return fail(result);
    PresetIndex index;
    index.build(collection.banksFolder);
    const PresetMarks marks(collection.marksFile);
    const auto found = index.find(query, marks, options.order);
    for (const int i : found)
        print(index.getEntries()[static_cast<std::size_t>(i)],
              marks.get(index.getEntries()[static_cast<std::size_t>(i)].place()));
    std::cout << std::flush;
    int code = exitFine;
    for (const auto& folder : listPresetFolders(collection.banksFolder))
        if (const auto result = checkListable(childNamed(collection.banksFolder, folder)); result.failed())
            code = fail(result);
    return found.empty() ? failWith("no preset fits") : code;
}

int showPreset(const PresetCollection& collection, const juce::String& preset, const ShowOptions& options)
{
    juce::File file;
    if (const auto result = findPresetOrFile(collection, preset, file); result.failed())
        return fail(result);
    PresetDocument document;
    if (const auto result = PresetDocument::open(file, document); result.failed())
        return fail(result);
    const auto installed = readInstalledInstruments(collection.pluginListFile);
    const auto show = options.json ? presetAsJson : presetAsText;
    const auto mark = PresetMarks(collection.marksFile)
                          .get({file.getParentDirectory().getFileName(), file.getFileNameWithoutExtension()});
    std::cout << show({file, document.chunk(), readPresetNotes(document.bytes()), mark}, options.all,
                      installed)
              << std::flush;
    return exitFine;
}

int listCategories()
{
    for (int group = 0; group < numCategoryGroups; ++group)
    {
        juce::StringArray words;
        for (int item = 0; item < categoriesPerGroup; ++item)
        {
            const juce::String word(categoryName(group * categoriesPerGroup + item));
            // A number for a name means that the category is unused.
            if (word.isNotEmpty() && !word.containsOnly("0123456789"))
                words.add(word);
        }
        std::cout << categoryHeading(group) << ": " << words.joinIntoString(", ") << '\n';
    }
    std::cout << std::flush;
    return exitFine;
}

int editCategories(const PresetCollection& collection, const juce::String& preset, CategoryChange change,
                   const juce::StringArray& categories)
{
    std::vector<int> flags;
    if (const auto result = findFlags(categories, flags); result.failed())
    {
        fail(result);
        return exitUsage;
    }
    juce::File file;
    if (const auto result = findPreset(collection, preset, file); result.failed())
        return fail(result);
    PresetPlace place;
    if (const auto result = splitPlace(preset, place); result.failed())
        return fail(result);
    if (const auto result = changeCategories(collection.banksFolder, {place}, change, flags); result.failed())
        return fail(result);
    PresetDocument document;
    if (const auto result = PresetDocument::open(file, document); result.failed())
        return fail(result);
    const auto words = categoryWords(categoriesOf(document));
    std::cout << preset << "  [" << words.joinIntoString(", ") << ']' << std::endl;
    return exitFine;
}

int copyTo(const PresetCollection& collection, const juce::String& preset, const juce::String& to,
           bool replace)
{
    juce::File source, target;
    if (const auto result = findPreset(collection, preset, source); result.failed())
        return fail(result);
    PresetPlace place;
    const auto name = to.endsWithChar('/') ? source.getFileNameWithoutExtension() : juce::String();
    if (const auto result = splitPlace(to + name, place); result.failed())
        return fail(result);
    if (const auto result = findTarget(collection.banksFolder, place, source, replace, target);
        result.failed())
        return fail(result);
    if (target == source)
        return failWith(quoted(preset) + " can't be copied to itself");
    if (const auto result = copyPreset(source, target, place); result.failed())
        return fail(result);
    std::cout << preset << " -> " << place.text() << std::endl;
    return exitFine;
}

int renameTo(const PresetCollection& collection, const juce::String& preset, const juce::String& to,
             bool replace)
{
    juce::File source, target;
    if (const auto result = findPreset(collection, preset, source); result.failed())
        return fail(result);
    PresetPlace place{source.getParentDirectory().getFileName(), to};
    if (to.containsChar('/'))
        if (const auto result = splitPlace(to, place); result.failed())
            return fail(result);
    if (const auto result = findTarget(collection.banksFolder, place, source, replace, target);
        result.failed())
        return fail(result);
    if (const auto result = renamePreset(source, target, place); result.failed())
        return fail(result);
    PresetMarks marks(collection.marksFile);
    const PresetPlace from{source.getParentDirectory().getFileName(), source.getFileNameWithoutExtension()};
    if (const auto result = marks.presetMoved(from, place); result.failed())
        return fail(result);
    std::cout << preset << " -> " << place.text() << std::endl;
    return exitFine;
}

int verifyPresets(const PresetCollection& collection, const juce::StringArray& what, bool strict)
{
    std::vector<Suspect> suspects;
    juce::StringArray unreadable;
    if (const auto result = collectSuspects(collection, what, suspects, unreadable); result.failed())
        return fail(result);
    for (const auto& problem : unreadable)
        failWith(problem);

    const auto installed = readInstalledInstruments(collection.pluginListFile);
    if (!installed.isKnown)
        std::cerr << "quorel-presets: there is no list of installed instruments: whether they are here isn't "
                     "checked\n";
    int errors = unreadable.size();
    int notes = what.isEmpty() ? reportStrays(collection.banksFolder) : 0;
    std::set<juce::String> folders;
    for (const auto& suspect : suspects)
    {
        folders.insert(suspect.file.getParentDirectory().getFullPathName());
        for (const auto& finding : checkPreset(suspect.file, suspect.isInBanks, installed))
        {
            const bool isError = finding.weight == Finding::Weight::error;
            ++(isError ? errors : notes);
            std::cout << suspect.title << ": " << (isError ? "error: " : "note: ") << finding.text << '\n';
        }
    }
    std::cout << count(static_cast<int>(suspects.size()), "preset") << " in "
              << count(static_cast<int>(folders.size()), "folder") << ": " << count(errors, "error") << ", "
              << count(notes, "note") << std::endl;
    return errors > 0 || (strict && notes > 0) ? exitFailed : exitFine;
}

int exportTo(const PresetCollection& collection, const juce::String& folder, const juce::File& archive,
             bool replace)
{
    if (const auto result = checkBanks(collection); result.failed())
        return fail(result);
    if (!listPresetFolders(collection.banksFolder).contains(folder))
        return failWith("there is no folder " + quoted(folder) + " in " +
                        collection.banksFolder.getFullPathName());
    if (archive.exists() && (!replace || archive.isDirectory()))
        return failWith(archive.getFullPathName() + " exists already");
    // A folder that is missing is more likely mistyped than meant to be made.
    if (!archive.getParentDirectory().isDirectory())
        return failWith("cannot write " + archive.getFullPathName() + " (there is no such folder)");
    const auto source = childNamed(collection.banksFolder, folder);
    juce::Array<juce::File> presets;
    for (const auto& name : listPresets(source))
        presets.add(childNamed(source, name + presetFileEnding));
    if (presets.isEmpty())
        return failWith("there are no presets in " + source.getFullPathName());
    if (const auto result = exportPresets(presets, folder, archive); result.failed())
        return fail(result);
    std::cout << archive.getFullPathName() << ": " << count(presets.size(), "preset") << " of " << folder
              << std::endl;
    return exitFine;
}

int importFrom(const PresetCollection& collection, const juce::File& archive, const juce::String& folder,
               bool replace)
{
    const auto& banks = collection.banksFolder;
    if (const auto result = checkBanks(collection); result.failed())
        return fail(result);
    if (folder.isNotEmpty() && !listPresetFolders(banks).contains(folder))
        if (const auto result = checkTypedName(folder, "a folder"); result.failed())
            return fail(result);
    FolderArchive content;
    if (const auto result = FolderArchive::read(archive, content); result.failed())
        return fail(result);
    const auto name = folder.isNotEmpty() ? folder : content.folderName();
    if (const auto taken = content.namesTaken(banks, name); !taken.isEmpty() && !replace)
        return failWith(quoted(name) + " has " +
                        (taken.size() == 1 ? juce::String("a preset") : count(taken.size(), "preset")) +
                        " of the same name already, such as " + quoted(taken[0]) +
                        ": give --replace, or another folder with --folder");
    if (const auto result = content.importTo(banks, name); result.failed())
        return fail(result);
    for (const auto& entry : content.passedOver())
        std::cerr << "quorel-presets: passed over " << quoted(entry) << ", which is no preset\n";
    std::cout << name << ": " << count(content.numPresets(), "preset") << " imported" << std::endl;
    return exitFine;
}

} // namespace quorel
