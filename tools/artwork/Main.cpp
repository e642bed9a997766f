// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-artwork: draws the editor's images into one block of files, which is compiled into the program.
#include "ImageBlock.h"
#include "Lettering.h"
#include "PngWriter.h"
#include "ProgramIcon.h"

#include "common/Tool.h"

#include <CLI/CLI.hpp>
#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel::artwork
{
namespace
{

void write(const std::string& path, const juce::MemoryBlock& data)
{
    if (!fileOf(path).replaceWithData(data.getData(), data.getSize()))
        throw std::runtime_error("cannot write " + path);
}

struct Options
{
    std::string regular, bold, condensed, output, icons, loose;
    /** Edge of the one icon to write instead, in pixels. */
    int iconSize = 0;
    bool isDocument = false;
};

int work(const Options& options)
{
    if (options.iconSize > 0)
    {
        write(options.icons, pngOf(options.isDocument ? drawDocumentIcon(options.iconSize)
                                                      : drawProgramIcon(options.iconSize)));
        return exitFine;
    }

    setTypefaces(fileOf(options.regular), fileOf(options.bold), fileOf(options.condensed));
    write(options.output, drawImageBlock(options.loose.empty() ? juce::File() : fileOf(options.loose)));
    write(options.icons, programIcons());
    return exitFine;
}

} // namespace
} // namespace quorel::artwork

int main(int argc, char** argv)
{
    CLI::App app("Draws the images of Quorel's editor", "quorel-artwork");
    quorel::artwork::Options options;
    app.add_option("--regular", options.regular, "TrueType file of the typeface");
    app.add_option("--bold", options.bold, "its bold weight");
    app.add_option("--condensed", options.condensed, "its bold condensed weight, for captions");
    app.add_option("--output", options.output, "block of images to write");
    app.add_option("--icons", options.icons, "strip of the program's icons to write");
    app.add_option("--icon-size", options.iconSize, "instead, write one icon of this size there")
        ->check(CLI::Range(16, 1024));
    app.add_flag("--document", options.isDocument, "that icon is the one of a preset file");
    app.add_option("--loose", options.loose, "folder to write the images to as files too");
    return quorel::runTool(app, argc, argv, [&options] { return quorel::artwork::work(options); });
}
