// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tool.h"

#include "NearNames.h"

#include "platform/FileOperations.h"
#include "platform/PlatformSeam.h"
#include "platform/PlatformSeamProgram.h"
#include "platform/Version.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <juce_events/juce_events.h>
#include <utility>

namespace quorel
{

namespace
{
/** What is missing, or what isn't known and stands in its place. */
std::string problemOfExtras(const CLI::App& app, const std::string& missing)
{
    const auto extras = app.remaining(true);
    if (extras.empty())
        return missing;
    const auto& extra = extras.front();
    if (extra.rfind('-', 0) == 0)
        return "unknown option \"" + extra + "\"";

    // Of the command that was named last.
    const auto* parent = &app;
    while (!parent->get_subcommands().empty())
        parent = parent->get_subcommands().front();
    juce::StringArray names;
    for (const auto* command : parent->get_subcommands([](const CLI::App*) { return true; }))
        names.add(textOf(command->get_name()));
    if (names.isEmpty())
        return missing;
    return "unknown command \"" + extra + "\"" + didYouMean(textOf(extra), names).toStdString();
}
} // namespace

int runTool(CLI::App& app, const std::function<void()>& parse, const std::function<int()>& work)
{
    const auto fail = [&app](const std::string& text, ExitCode code)
    {
        std::cerr << app.get_name() << ": " << text << std::endl;
        return static_cast<int>(code);
    };
    const auto checked = [&fail](int code)
    { return std::cout.flush() || code != exitFine ? code : fail("cannot write the output", exitFailed); };
    try
    {
        keepStandardStreams();
        const Utf8Console console;
        app.set_version_flag("--version", app.get_name() + " " + productVersion, "Print the version and end");
        parse();
        const juce::ScopedJuceInitialiser_GUI juceInitialiser;
        removeFilesAtSignals();
        return checked(work());
    }
    catch (const CLI::Success& answer)
    {
        return checked(app.exit(answer));
    }
    catch (const CLI::RequiredError& error)
    {
        return fail(problemOfExtras(app, error.what()) + " (see --help)", exitUsage);
    }
    catch (const CLI::ParseError& error)
    {
        return fail(error.what() + std::string(" (see --help)"), exitUsage);
    }
    catch (const UsageFailure& failure)
    {
        return fail(failure.what(), exitUsage);
    }
    catch (const std::exception& error)
    {
        return fail(error.what(), exitFailed);
    }
}

int runTool(CLI::App& app, int argc, const char* const* argv, const std::function<int()>& work)
{
    return runTool(
        app,
        [&]
        {
            auto arguments = checkedArguments(argc, argv);
            std::reverse(arguments.begin(), arguments.end()); // as CLI11 wants them
            app.parse(std::move(arguments));
        },
        work);
}

std::vector<std::string> checkedArguments(int argc, const char* const* argv)
{
    auto arguments = programArguments(argc, argv);
    for (const auto& argument : arguments)
        if (!juce::CharPointer_UTF8::isValidString(argument.c_str(), static_cast<int>(argument.size())))
            throw UsageFailure("this is not UTF-8: " + textOf(argument));
    return arguments;
}

void checkPrefix(const juce::File& prefix)
{
    if (prefix != juce::File() && prefix.exists() && !prefix.isDirectory())
        throw ToolFailure("--prefix " + prefix.getFullPathName() + " is no folder");
    if (prefix == juce::File() && !hasUserPlaces())
        throw ToolFailure("this user has no home folder: set HOME");
}

std::string problemOfPath(const std::string& path)
{
    return path.empty() ? "an empty path" : std::string();
}

juce::String textOf(const std::string& argument)
{
    return juce::String::fromUTF8(argument.c_str());
}

juce::Result cannotRead(const juce::File& file)
{
    const auto checked = checkReadable(file);
    const auto reason = file.isDirectory() ? juce::String("it is a folder")
                        : checked.failed() ? checked.getErrorMessage()
                                           : juce::FileInputStream(file).getStatus().getErrorMessage();
    return juce::Result::fail("cannot read " + file.getFullPathName() +
                              (reason.isEmpty() ? juce::String() : " (" + reason + ")"));
}

juce::File fileOf(const std::string& path)
{
    return juce::File::getCurrentWorkingDirectory().getChildFile(textOf(path));
}

} // namespace quorel
