// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-presets: the user's preset library from the command line.
#include "Commands.h"

#include "common/Tool.h"
#include "platform/PlatformSeam.h"
#include "platform/PlatformSeamFiles.h"
#include "platform/UserPaths.h"
#include "setup/FirstStart.h"

#include <CLI/CLI.hpp>
#include <functional>

namespace quorel
{
namespace
{
juce::StringArray textsOf(const std::vector<std::string>& texts)
{
    juce::StringArray all;
    for (const auto& text : texts)
        all.add(textOf(text));
    return all;
}

/** As lists print it, too: "My Sounds/". */
juce::String folderOf(const std::string& text)
{
    return textOf(text).trimCharactersAtEnd("/");
}

/** Everything that the command line can say, and the command that it asks for. */
struct Arguments
{
    std::string prefix, banks;
    std::string preset, to, folder, text, file;
    std::vector<std::string> names;
    bool all = false, json = false, replace = false, strict = false;
    std::string author, comment, order = "name";
    int rating = 0;
    bool favourites = false, recent = false, off = false, forGood = false;

    std::function<int(const PresetCollection&)> command;

    PresetCollection collection() const
    {
        checkPrefix(prefix.empty() ? juce::File() : fileOf(prefix));
        if (!prefix.empty() && !fileOf(prefix).isDirectory())
            throw ToolFailure("there is no folder " + fileOf(prefix).getFullPathName());
        if (prefix.empty() && banks.empty())
            setUpAtFirstStart();
        const auto places = prefix.empty() ? userPlaces() : userPlaces(fileOf(prefix));
        const auto store = prefix.empty() ? makeUserStore() : makeUserStore(places);
        const auto paths = readPaths(*store);
        if (banks.empty() || isSamePlace(fileOf(banks), paths.banksFolder))
            return {paths.banksFolder, paths.pluginListFile, presetMarksFile(paths)};
        // The marks are kept by name, and would be taken for those of other presets.
        return {fileOf(banks), paths.pluginListFile, {}};
    }

    ListOptions listOptions() const
    {
        ListOptions options;
        options.text = textOf(text);
        options.categories = textsOf(names);
        options.author = textOf(author);
        options.lowestRating = rating;
        options.among = favourites ? PresetQuery::Among::favourites
                        : recent   ? PresetQuery::Among::recent
                                   : PresetQuery::Among::all;
        options.order = order == "rating" ? PresetOrder::byRating
                        : order == "date" ? PresetOrder::byDate
                                          : PresetOrder::byName;
        return options;
    }
};

class CommandLine
{
public:
    explicit CommandLine(Arguments& destination)
        : arguments(destination)
    {
        app.add_option("--prefix", arguments.prefix,
                       "Uses the settings below this folder instead of the user's own")
            ->check(problemOfPath)
            ->type_name("DIR");
        app.add_option("--banks", arguments.banks,
                       "Uses this banks folder instead of the one in the settings; its presets have no\n"
                       "stars, favourites and last uses")
            ->check(problemOfPath)
            ->type_name("DIR");
        app.require_subcommand(1);
        app.footer("A preset is given as \"FOLDER/NAME\", by its exact names. list, search, show, verify and "
                   "categories list change no preset.");
        addReaders();
        addCategories();
        addMarks();
        addWriters();
        addSeveral();
        addArchives();
    }

    CLI::App& parser() { return app; }

private:
    using Command = std::function<int(const PresetCollection&)>;

    CLI::App& add(CLI::App& parent, const char* name, const char* description, const Command& command)
    {
        auto& sub = *parent.add_subcommand(name, description);
        sub.final_callback([this, command] { arguments.command = command; });
        return sub;
    }

    void addPreset(CLI::App& sub, const char* description)
    {
        sub.add_option("preset", arguments.preset, description)->required()->type_name("PRESET");
    }

    void addReaders()
    {
        auto& a = arguments;
        auto& list =
            add(app, "list", "Lists folders and presets with their categories",
                [&a](const auto& c) { return listPresetsIn(c, folderOf(a.folder), a.listOptions()); });
        list.add_option("folder", a.folder, "Only this folder")->type_name("FOLDER");
        addListOptions(list);

        auto& search = add(app, "search", "Finds presets by text, by categories, or by both",
                           [&a](const auto& c) { return searchPresets(c, a.listOptions()); });
        search.add_option("text", a.text, "Part of name, author or comment, in any letter case")
            ->type_name("TEXT");
        addListOptions(search);
        search.add_option("-c,--category", a.names, "Category that it must have; may be repeated")
            ->allow_extra_args(false)
            ->type_name("NAME");

        auto& show = add(app, "show", "Shows instruments, categories and parameters of a preset",
                         [&a](const auto& c) {
                             return showPreset(c, textOf(a.preset), ShowOptions{a.all, a.json});
                         });
        addPreset(show, "FOLDER/NAME, or a preset file");
        show.add_flag("--all", a.all, "Shows all parameters, not just those off their defaults");
        show.add_flag("--json", a.json, "Prints JSON");

        auto& verify =
            add(app, "verify", "Looks for what is wrong with presets; everything, if nothing is named",
                [&a](const auto& c) { return verifyPresets(c, textsOf(a.names), a.strict); });
        verify.add_option("what", a.names, "Folders, FOLDER/NAME or preset files")->type_name("WHAT");
        verify.add_flag("--strict", a.strict, "Ends with an error if there are notes");
    }

    void addListOptions(CLI::App& sub)
    {
        auto& a = arguments;
        auto* favourites = sub.add_flag("--favourites", a.favourites, "Only favourites");
        sub.add_flag("--recent", a.recent, "Only recently used ones, the newest first")->excludes(favourites);
        sub.add_option("--rated", a.rating, "Only those with at least this many stars")
            ->type_name("STARS")
            ->check(CLI::Range(0, highestRating));
        sub.add_option("--author", a.author, "Only those by this author; a part will do")->type_name("TEXT");
        sub.add_option("--sort", a.order, "Order: name, or the best rating or newest date first")
            ->check(CLI::IsMember({"name", "rating", "date"}));
    }

    void addMarks()
    {
        auto& a = arguments;
        auto& rate = add(app, "rate", "Rates a preset",
                         [&a](const auto& c) { return ratePreset(c, textOf(a.preset), a.rating); });
        addPreset(rate, "FOLDER/NAME");
        rate.add_option("stars", a.rating, "0 to 5; 0 takes the rating off")
            ->required()
            ->type_name("STARS")
            ->check(CLI::Range(0, highestRating));

        auto& favourite = add(app, "favourite", "Makes a preset a favourite",
                              [&a](const auto& c) { return markFavourite(c, textOf(a.preset), !a.off); });
        addPreset(favourite, "FOLDER/NAME");
        favourite.add_flag("--off", a.off, "Takes it off the favourites");

        auto& notes = *app.add_subcommand("notes", "Writes author and comment into a preset, or shows them");
        addPreset(notes, "FOLDER/NAME");
        auto* author = notes.add_option("--author", a.author, "Who made it; may be empty")->type_name("TEXT");
        auto* comment = notes.add_option("--comment", a.comment, "A comment; may be empty");
        comment->type_name("TEXT");
        notes.final_callback(
            [&a, author, comment]
            {
                a.command = [&a, author, comment](const auto& c)
                {
                    const auto given = [](const CLI::Option* option, const std::string& value)
                    { return option->count() > 0 ? std::optional(textOf(value)) : std::nullopt; };
                    return editNotes(c, textOf(a.preset), given(author, a.author), given(comment, a.comment));
                };
            });
    }

    void addSeveral()
    {
        auto& a = arguments;
        auto& move = add(app, "move", "Moves presets to a folder",
                         [&a](const auto& c) { return moveTo(c, textsOf(a.names), folderOf(a.folder)); });
        move.add_option("presets", a.names, "FOLDER/NAME, one or more")->required()->type_name("PRESET");
        move.add_option("--to", a.folder, "The folder; made where it is missing")
            ->required()
            ->check(problemOfPath)
            ->type_name("FOLDER");

        auto& erase = add(app, "delete", "Moves presets to the trash",
                          [&a](const auto& c) { return deletePresets(c, textsOf(a.names), a.forGood); });
        erase.add_option("presets", a.names, "FOLDER/NAME, one or more")->required()->type_name("PRESET");
        erase.add_flag("--for-good", a.forGood, "Deletes for good what the trash doesn't take");
    }

    void addCategories()
    {
        auto& a = arguments;
        auto& categories = *app.add_subcommand("categories", "Shows and changes categories");
        categories.require_subcommand(1);
        add(categories, "list", "Lists the names of all categories",
            [](const auto&) { return listCategories(); });
        const auto addChange = [&](const char* name, const char* description, CategoryChange change)
        {
            auto& sub = add(categories, name, description,
                            [&a, change](const auto& c)
                            { return editCategories(c, textOf(a.preset), change, textsOf(a.names)); });
            addPreset(sub, "FOLDER/NAME");
            auto& names = *sub.add_option("names", a.names, "Categories")->type_name("NAME");
            if (change != CategoryChange::set)
                names.required();
        };
        addChange("set", "Gives a preset these categories and no others; without names, none",
                  CategoryChange::set);
        addChange("add", "Adds categories to a preset's", CategoryChange::add);
        addChange("remove", "Takes categories off a preset", CategoryChange::remove);
    }

    void addWriters()
    {
        auto& a = arguments;
        auto& copy =
            add(app, "copy", "Copies a preset",
                [&a](const auto& c) { return copyTo(c, textOf(a.preset), textOf(a.to), a.replace); });
        addPreset(copy, "FOLDER/NAME");
        copy.add_option("to", a.to, "FOLDER/NAME, or FOLDER/ to keep the name")->required()->type_name("TO");
        addReplace(copy);

        auto& rename =
            add(app, "rename", "Renames a preset, or moves it to another folder",
                [&a](const auto& c) { return renameTo(c, textOf(a.preset), textOf(a.to), a.replace); });
        addPreset(rename, "FOLDER/NAME");
        rename.add_option("to", a.to, "NAME, or FOLDER/NAME")->required()->type_name("TO");
        addReplace(rename);
    }

    void addArchives()
    {
        auto& a = arguments;
        auto& exporting = add(app, "export", "Writes the presets of a folder to one zip file",
                              [&a](const auto& c)
                              {
                                  const auto archive =
                                      a.file.empty() ? folderOf(a.folder).toStdString() + ".zip" : a.file;
                                  return exportTo(c, folderOf(a.folder), fileOf(archive), a.replace);
                              });
        exporting.add_option("folder", a.folder, "The folder")->required()->type_name("FOLDER");
        exporting.add_option("-o,--output", a.file, "The archive; FOLDER.zip if it isn't given")
            ->type_name("FILE");
        addReplace(exporting);

        auto& importing =
            add(app, "import", "Puts the presets of such a file into a folder",
                [&a](const auto& c) { return importFrom(c, fileOf(a.file), textOf(a.folder), a.replace); });
        importing.add_option("file", a.file, "The archive")->required()->type_name("FILE");
        importing.add_option("--folder", a.folder, "Name for the folder instead of the archive's")
            ->type_name("NAME");
        addReplace(importing);
    }

    void addReplace(CLI::App& sub) { sub.add_flag("--replace", arguments.replace, "Replaces what is there"); }

    Arguments& arguments;
    CLI::App app{"The preset library of Quorel.", "quorel-presets"};
};

} // namespace
} // namespace quorel

int main(int argc, char** argv)
{
    quorel::Arguments arguments;
    quorel::CommandLine commandLine(arguments);
    return quorel::runTool(commandLine.parser(), argc, argv,
                           [&arguments] { return arguments.command(arguments.collection()); });
}
