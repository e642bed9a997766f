// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-setup: sets a user up to play.
#include "Installer.h"
#include "Remover.h"

#include "common/Tool.h"
#include "platform/Version.h"

#include <CLI/CLI.hpp>
#include <iostream>

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
};

int work(const Options& options)
{
    const bool hasPrefix = !options.prefix.empty();
    const auto places = hasPrefix ? userPlaces(fileOf(options.prefix)) : userPlaces();
    const auto store = hasPrefix ? makeUserStore(places) : makeUserStore();

    if (options.remove)
        return Remover(*store, places).run() ? exitFine : exitFailed;

    const auto besideThis =
        juce::File::getSpecialLocation(juce::File::currentExecutableFile).getParentDirectory();

    Installer installer(*store, places, options.source.empty() ? besideThis : fileOf(options.source));
    if (options.show)
    {
        std::cout << installer.describeSettings() << std::endl;
        return exitFine;
    }
    return installer.run(options.restoreRemoved) ? exitFine : exitFailed;
}
} // namespace
} // namespace quorel

int main(int argc, char** argv)
{
    using namespace quorel;

    Options options;
    CLI::App app(
        "Writes the per-user settings of Quorel, creates its folders and installs the starter instruments "
        "and the factory presets. Settings that have a value and files that you changed stay as they are.",
        "quorel-setup");
    app.add_option("--prefix", options.prefix,
                   "Set up in DIR/config and DIR/data; start programs with " +
                       prefixVariables().toStdString())
        ->check([](const std::string& path) { return path.empty() ? "an empty path" : std::string(); })
        ->type_name("DIR");
    app.add_option("--from", options.source,
                   "Where the folders Ostrand, Banks and presets lie (default: beside this program)")
        ->check(CLI::ExistingDirectory)
        ->type_name("DIR");
    auto* show = app.add_flag("--show", options.show, "Print all settings and change nothing");
    auto* restore = app.add_flag("--restore", options.restoreRemoved, "Install again what you removed");
    app.add_flag(
           "--remove", options.remove,
           "Take back what this program has set up: unchanged files and settings that you left as they were")
        ->excludes(show)
        ->excludes(restore);
    app.set_version_flag("--version",
                         app.get_name() + " " + productVersion + ", " + versionText().toStdString());
    return runTool(app, argc, argv, [&options] { return work(options); });
}
