// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RenderOptions.h"

#include <CLI/CLI.hpp>

namespace quorel
{

/** The command line of quorel-render. */
class CommandLine
{
public:
    CommandLine();

    CLI::App& parser() { return app; }

    /** What the arguments say. Throws CLI11's request for help, or a UsageFailure, both for `runTool`. */
    RenderOptions parse(int argc, const char* const* argv);

private:
    void addFiles();
    void addSound();
    void addRendering();
    void addUserAndLists();
    RenderOptions choices() const;

    /** Plain numbers and flags go here at once; what has yet to be parsed is kept below. */
    RenderOptions options;
    std::string midiFile, input, output, preset, savePreset, prefix;
    std::vector<std::string> layers, effects, sends, parameters;
    double tempo = 0.0;
    CLI::Option* tempoOption = nullptr;
    CLI::App app{"Renders a Standard MIDI File, or a sound file, through a Quorel sound.", "quorel-render"};
};

} // namespace quorel
