// SPDX-License-Identifier: GPL-3.0-or-later
// What the command line programs have in common: their exit codes, how they tell an error, JUCE around their work.
#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace CLI
{
class App;
}

namespace quorel
{

/** What a program ends with. */
enum ExitCode
{
    exitFine = 0,
    /** Something could not be done. */
    exitFailed = 1,
    /** The command line makes no sense; nothing was done. */
    exitUsage = 2
};

/** Ends a program with `exitFailed` and this line on the standard error stream. */
class ToolFailure : public std::runtime_error
{
public:
    explicit ToolFailure(const juce::String& text)
        : std::runtime_error(text.toStdString())
    {
    }
};

/** Ends a program with `exitUsage` and this line on the standard error stream. */
class UsageFailure : public std::runtime_error
{
public:
    explicit UsageFailure(const juce::String& text)
        : std::runtime_error(text.toStdString())
    {
    }
};

/** The body of `main`. `parse` reads the command line into what `app` was told to fill; then `work` runs with
    JUCE up, its notes about plug-ins kept off the standard error stream, and returns the exit code. Help and version go
    to the standard output. Anything thrown becomes one line "name: what is wrong" on the standard error stream, with
    "(see --help)" behind it if CLI11 threw it. */
int runTool(CLI::App& app, const std::function<void()>& parse, const std::function<int()>& work);

/** The same, for a program that leaves its arguments to CLI11 as they are. */
int runTool(CLI::App& app, int argc, const char* const* argv, const std::function<int()>& work);

/** An argument's text, which is UTF-8. */
juce::String textOf(const std::string& argument);

/** The file that an argument names, from the current folder on. */
juce::File fileOf(const std::string& path);

} // namespace quorel
