// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tool.h"

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
            auto arguments = programArguments(argc, argv);
            std::reverse(arguments.begin(), arguments.end()); // as CLI11 wants them
            app.parse(std::move(arguments));
        },
        work);
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
