// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-paramlist: prints or writes the list of parameters, or checks that a written one is current.
#include "ParameterList.h"

#include "common/Tool.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace quorel
{
namespace
{
constexpr const char* toolName = "quorel-paramlist";

int work(const std::string& output, const std::string& check)
{
    const auto list = parameterList();

    if (!check.empty())
    {
        const auto file = fileOf(check);
        if (!file.existsAsFile())
            throw ToolFailure("cannot read " + file.getFullPathName());
        if (file.loadFileAsString().replace("\r\n", "\n") != list)
            throw ToolFailure(file.getFullPathName() + " is out of date: write it anew with --output");
        return exitFine;
    }

    if (output.empty())
    {
        std::cout << list << std::flush;
        return exitFine;
    }

    const auto file = fileOf(output);
    if (file.isDirectory() || !file.replaceWithText(list, false, false, "\n"))
        throw ToolFailure("cannot write " + file.getFullPathName());
    return exitFine;
}
} // namespace
} // namespace quorel

int main(int argc, char** argv)
{
    std::string output;
    std::string check;
    CLI::App app("Lists all parameters of Quorel with their defaults and texts, in Markdown.",
                 quorel::toolName);
    auto* const outputOption =
        app.add_option("--output", output, "Write the list to FILE, not to the terminal");
    outputOption->type_name("FILE");
    app.add_option("--check", check, "Fail if FILE doesn't hold the current list")
        ->type_name("FILE")
        ->excludes(outputOption);
    return quorel::runTool(app, argc, argv, [&] { return quorel::work(output, check); });
}
