// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-setup: sets a user up to play.
#include "PluginLinks.h"
#include "Remover.h"

#include "common/Tool.h"
#include "platform/FileOperations.h"
#include "platform/PlatformSeamProduct.h"
#include "platform/SharedFile.h"
#include "setup/FirstStart.h"
#include "setup/Installer.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <vector>

namespace quorel
{
namespace
{
struct Options
{
    std::string prefix;
    std::string source;
    bool show = false;
    bool restoreRemoved = false;
    bool remove = false;
    bool link = false;
};

/** Where the instruments and all that belongs to them lie. */
juce::File sourceOf(const Options& options)
{
    if (!options.source.empty())
        return fileOf(options.source);

    const auto product = productFolder();
    // Nothing is there either, but it is what a message can name.
    return product != juce::File() ? product : ownFile().getParentDirectory();
}

/** Creates these folders; throws where nothing could be put into them. */
void checkWritable(const std::vector<juce::File>& folders)
{
    for (const auto& folder : folders)
    {
        if (const auto result = createFolder(folder); result.failed())
            throw ToolFailure("cannot create the folder " + folder.getFullPathName() + " (" +
                              result.getErrorMessage() + ")");
        if (!folder.hasWriteAccess())
            throw ToolFailure("cannot write to the folder " + folder.getFullPathName());
    }
}

int work(const Options& options)
{
    const bool hasPrefix = !options.prefix.empty();
    checkPrefix(hasPrefix ? fileOf(options.prefix) : juce::File());
    const auto places = hasPrefix ? userPlaces(fileOf(options.prefix)) : userPlaces();
    const auto store = hasPrefix ? makeUserStore(places) : makeUserStore();
    const auto home =
        hasPrefix ? fileOf(options.prefix) : juce::File::getSpecialLocation(juce::File::userHomeDirectory);
    const SetupWords words{[](const juce::String& line) { std::cout << line << std::endl; },
                           [](const juce::String& line)
                           { std::cerr << "quorel-setup: " << line << std::endl; }};

    if (options.show)
    {
        std::cout << Installer(*store, places, sourceOf(options), words).describeSettings() << std::endl;
        return exitFine;
    }

    if (!options.link && !options.remove)
        checkWritable({places.settingsFolder, places.dataFolder});
    const SharedFileLock lock(setupLock(places.settingsFolder), setupPatienceMillis);
    if (!lock.isHeld())
        throw ToolFailure("another program is setting you up at the moment: try again when it is done");

    PluginLinks links(places, home, words);
    if (options.link)
        return links.make(sourceOf(options)) ? exitFine : exitFailed;

    if (options.remove)
    {
        // Before the folder that holds their list goes.
        const bool areLinksGone = links.remove();
        return Remover(*store, places, words).run() && areLinksGone ? exitFine : exitFailed;
    }

    return Installer(*store, places, sourceOf(options), words).run(options.restoreRemoved) ? exitFine
                                                                                           : exitFailed;
}
} // namespace
} // namespace quorel

int main(int argc, char** argv)
{
    using namespace quorel;

    Options options;
    CLI::App app(
        "Writes the per-user settings of Quorel, creates its folders and installs the starter instruments "
        "and the factory presets. Settings that have a value and files that you changed stay as they are. "
        "Quorel does the same by itself when it is started for the first time.",
        "quorel-setup");
    app.add_option("--prefix", options.prefix,
                   "Set up in DIR/config and DIR/data; start programs with " +
                       prefixVariables().toStdString())
        ->check(problemOfPath)
        ->type_name("DIR");
    app.add_option("--from", options.source,
                   "Folder that holds Ostrand, Banks and presets (default: where Quorel is installed)")
        ->check(CLI::ExistingDirectory)
        ->type_name("DIR");
    auto* show = app.add_flag("--show", options.show, "Print all settings and change nothing");
    auto* restore = app.add_flag("--restore", options.restoreRemoved, "Install again what you removed");
    auto* link =
        app.add_flag("--link", options.link,
                     "Put links to the plug-ins into ~/.vst, ~/.vst3 and ~/.lv2, or those of --prefix, "
                     "for hosts that look nowhere else; and do no more than that");
    app.add_flag("--remove", options.remove,
                 "Take back what this program has set up: unchanged files, links, and settings that you "
                 "left as they were")
        ->excludes(show)
        ->excludes(restore)
        ->excludes(link);
    link->excludes(show)->excludes(restore);
    return runTool(app, argc, argv, [&options] { return work(options); });
}
