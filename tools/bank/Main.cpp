// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-bank: builds the factory presets from their texts.
#include "BankBuilder.h"

#include "common/Tool.h"

#include <CLI/CLI.hpp>
#include <iostream>

int main(int argc, char** argv)
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

    return runTool(app, argc, argv,
                   [&]
                   {
                       const BankBuilder builder(fileOf(distribution));
                       const auto report = [](const juce::String& error) { std::cerr << error << std::endl; };
                       const bool succeeded = builder.buildAll(fileOf(source), fileOf(output), report);
                       return succeeded ? exitFine : exitFailed;
                   });
}
