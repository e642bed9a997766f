// SPDX-License-Identifier: GPL-3.0-or-later
// What the command line programs have in common: exit codes, errors, and JUCE around their work.
#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

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

/** The body of `main`. `parse` reads the command line into the variables that `app` knows. Then `work` runs
    while JUCE is up, and returns the exit code. Help and version, which this adds, go to the standard output. An
    exception becomes one line "name: what is wrong" on the standard error stream, followed by "(see --help)" if
    CLI11 threw it. Output that can't be written is a failure, too. */
int runTool(CLI::App& app, const std::function<void()>& parse, const std::function<int()>& work);

/** The same, for a program whose arguments CLI11 parses as they are. */
int runTool(CLI::App& app, int argc, const char* const* argv, const std::function<int()>& work);

/** What the program was started with. Throws a UsageFailure for what isn't UTF-8: it would be taken for another name. */
std::vector<std::string> checkedArguments(int argc, const char* const* argv);

/** Throws a ToolFailure where this isn't a folder, or, without one, where the user has no home. `prefix` is the
    argument of --prefix; empty for none. */
void checkPrefix(const juce::File& prefix);

/** CLI11's check of a folder or file: none is given by leaving the option out, not by an empty word, which a
    script's unset variable would be. */
std::string problemOfPath(const std::string& path);

/** An argument's text, which is UTF-8. */
juce::String textOf(const std::string& argument);

/** That a file can't be read, and why: "cannot read /home/anna (it is a folder)". */
juce::Result cannotRead(const juce::File& file);

/** The file that an argument names, relative to the current folder. */
juce::File fileOf(const std::string& path);

} // namespace quorel
