// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-setup: sets a user up to play.
#include "Installer.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace
{
constexpr int exitFailed = 1;
constexpr int exitUsage = 2;

int run(int argc, char** argv)
{
    using namespace quorel;

    std::string prefix;
    std::string source;
    bool show = false;
    bool restoreRemoved = false;

    CLI::App app(
        "Writes the per-user settings of Quorel, creates its folders and installs the starter instruments "
        "and the factory presets. Settings that have a value and files that you changed stay as they are.",
        "quorel-setup");
    app.add_option(
           "--prefix", prefix,
           "Set up in DIR/config and DIR/data; start programs with XDG_CONFIG_HOME and XDG_DATA_HOME there")
        ->type_name("DIR");
    app.add_option("--from", source,
                   "Where the folders Ostrand, Banks and presets lie (default: beside this program)")
        ->check(CLI::ExistingDirectory)
        ->type_name("DIR");
    app.add_flag("--show", show, "Print all settings and change nothing");
    app.add_flag("--restore", restoreRemoved, "Install again what you removed");
    app.set_version_flag("--version", "quorel-setup " QUOREL_VERSION ", " + versionText().toStdString());

    try
    {
        app.parse(argc, argv);
    }
    catch (const CLI::Success& answer)
    {
        return app.exit(answer);
    }
    catch (const CLI::ParseError& error)
    {
        std::cerr << "quorel-setup: " << error.what() << " (see --help)" << std::endl;
        return exitUsage;
    }

    const auto here = juce::File::getCurrentWorkingDirectory();
    const bool hasPrefix = app.count("--prefix") > 0;
    if (hasPrefix && prefix.empty())
    {
        std::cerr << "quorel-setup: --prefix: an empty path (see --help)" << std::endl;
        return exitUsage;
    }
    const auto places =
        hasPrefix ? userPlaces(here.getChildFile(juce::String::fromUTF8(prefix.c_str()))) : userPlaces();
    const auto store = hasPrefix ? makeUserStore(places) : makeUserStore();
    const auto sourceFolder =
        source.empty()
            ? juce::File::getSpecialLocation(juce::File::currentExecutableFile).getParentDirectory()
            : here.getChildFile(juce::String::fromUTF8(source.c_str()));

    Installer installer(*store, places, sourceFolder);
    if (show)
    {
        std::cout << installer.describeSettings() << std::endl;
        return 0;
    }
    return installer.run(restoreRemoved) ? 0 : exitFailed;
}
} // namespace

int main(int argc, char** argv)
{
    try
    {
        return run(argc, argv);
    }
    catch (const std::exception& error)
    {
        std::cerr << "quorel-setup: " << error.what() << std::endl;
        return exitFailed;
    }
}
