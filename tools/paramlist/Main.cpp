// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-paramlist: prints or writes the list of parameters, or checks that a written one is current.
#include "ParameterList.h"

#include "common/ConsoleInteraction.h"
#include "common/QuietLogger.h"
#include "platform/PlatformSeam.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace quorel
{
namespace
{
constexpr const char* toolName = "quorel-paramlist";

/** The list of a processor whose user has no settings, folders or instruments. */
juce::String makeList()
{
    const auto settings = juce::File::getSpecialLocation(juce::File::tempDirectory)
                              .getChildFile(toolName + ("-" + juce::Uuid().toString()));
    ConsoleInteraction interaction(toolName);
    juce::String list;
    {
        // Too large for the stack.
        const auto processor =
            std::make_unique<PluginProcessor>(makeUserStore(userPlaces(settings)), interaction);
        list = parameterList(*processor);
    }
    settings.deleteRecursively();
    return list;
}

int fail(const juce::String& what)
{
    std::cerr << toolName << ": " << what << std::endl;
    return 1;
}

int work(const std::string& output, const std::string& check)
{
    const QuietLogger quietLogger;
    const juce::ScopedJuceInitialiser_GUI juceInitialiser;
    const auto here = juce::File::getCurrentWorkingDirectory();
    const auto list = makeList();

    if (!check.empty())
    {
        const auto file = here.getChildFile(juce::String::fromUTF8(check.c_str()));
        if (!file.existsAsFile())
            return fail("cannot read " + file.getFullPathName());
        const bool current = file.loadFileAsString().replace("\r\n", "\n") == list;
        return current ? 0 : fail(file.getFullPathName() + " is out of date: write it anew with --output");
    }

    if (output.empty())
    {
        std::cout << list << std::flush;
        return 0;
    }

    const auto file = here.getChildFile(juce::String::fromUTF8(output.c_str()));
    const bool written = !file.isDirectory() && file.replaceWithText(list, false, false, "\n");
    return written ? 0 : fail("cannot write " + file.getFullPathName());
}

int run(int argc, char** argv)
{
    constexpr int exitUsage = 2;
    std::string output;
    std::string check;
    CLI::App app("Lists all parameters of Quorel with their defaults and texts, in Markdown.", toolName);
    auto* const outputOption =
        app.add_option("--output", output, "Write the list to FILE, not to the terminal");
    outputOption->type_name("FILE");
    app.add_option("--check", check, "Fail if FILE doesn't hold the current list")
        ->type_name("FILE")
        ->excludes(outputOption);

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
        std::cerr << toolName << ": " << error.what() << " (see --help)" << std::endl;
        return exitUsage;
    }

    return work(output, check);
}
} // namespace
} // namespace quorel

int main(int argc, char** argv)
{
    try
    {
        return quorel::run(argc, argv);
    }
    catch (const std::exception& error)
    {
        return quorel::fail(error.what());
    }
}
