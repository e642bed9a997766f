// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-bank: builds the factory presets from their texts.
#include "BankBuilder.h"

#include "common/QuietLogger.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <juce_events/juce_events.h>

namespace
{
constexpr int exitFailed = 1;
constexpr int exitUsage = 2;

int run(int argc, char** argv)
{
    using namespace quorel;

    std::string distribution, source, output;
    CLI::App app("Builds presets from texts: SOURCE/<folder>/<name>.txt into OUTPUT/<folder>/<name>.qrl. "
                 "The user's own settings and files stay out of it.",
                 "quorel-bank");
    app.add_option("--from", distribution,
                   "Where the folders Ostrand and Banks of the starter instruments lie")
        ->required()
        ->check(CLI::ExistingDirectory)
        ->type_name("DIR");
    app.add_option("source", source, "Folder of the texts")->required()->check(CLI::ExistingDirectory);
    app.add_option("output", output, "Folder to write to")->required();

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
        std::cerr << "quorel-bank: " << error.what() << " (see --help)" << std::endl;
        return exitUsage;
    }

    const auto here = juce::File::getCurrentWorkingDirectory();
    const auto file = [&here](const std::string& path)
    { return here.getChildFile(juce::String::fromUTF8(path.c_str())); };
    const QuietLogger quietLogger;
    // Before JUCE's first thread: the builder takes other places for the user's own.
    const BankBuilder builder(file(distribution));
    const juce::ScopedJuceInitialiser_GUI juceInitialiser;
    const auto report = [](const juce::String& error) { std::cerr << error << std::endl; };
    return builder.buildAll(file(source), file(output), report) ? 0 : exitFailed;
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
        std::cerr << "quorel-bank: " << error.what() << std::endl;
        return exitFailed;
    }
}
