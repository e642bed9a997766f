// SPDX-License-Identifier: GPL-3.0-or-later
// quorel-screenshots: writes a PNG of every page, panel and mode of the editor, and fails where a text has less
// contrast than it takes to read it. Needs a display, but no window manager.
#include "EditorPictures.h"
#include "Scenes.h"

#include "common/ConsoleInteraction.h"
#include "common/Tool.h"
#include "platform/PlatformSeam.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace quorel
{
namespace
{
constexpr const char* toolName = "quorel-screenshots";

struct Options
{
    std::string prefix;
    std::string output = "screenshots";
    /** Folder for the guide's pictures; none are written without. */
    std::string guide;
    /** Percent. */
    std::vector<int> scales{100, 200};
    /** Parts of scenes' names; all scenes without any. */
    std::vector<std::string> only;
    bool menus = false;
};

bool isWanted(const Options& options, const juce::String& name)
{
    return options.only.empty() ||
           std::any_of(options.only.begin(), options.only.end(),
                       [&](const std::string& part) { return name.contains(juce::String(part)); });
}

void writePng(const juce::Image& image, const juce::File& file)
{
    juce::MemoryOutputStream bytes;
    if (!juce::PNGImageFormat().writeImageToStream(image, bytes) ||
        !file.replaceWithData(bytes.getData(), bytes.getDataSize()))
        throw ToolFailure("cannot write " + file.getFullPathName());
}

void writeGuidePictures(const juce::String& scene, EditorPictures& editor, const juce::File& folder)
{
    for (const auto& [name, shown, part] : guidePictures())
        if (scene == shown)
        {
            const auto image = editor.picture(1.0f).image;
            writePng(image.getClippedImage(part.isEmpty() ? image.getBounds() : part),
                     folder.getChildFile(juce::String(name) + ".png"));
        }
}

/** Tells a failure that doesn't keep the other pictures from being taken. Returns the exit code. */
int tell(const juce::String& text)
{
    std::cerr << toolName << ": " << text << std::endl;
    return exitFailed;
}

/** Tells of all text that is hard to read. Returns the exit code. */
int checkTexts(const juce::String& name, int scale, const EditorPictures::Picture& picture)
{
    int result = exitFine;
    for (const auto& text : picture.unseen)
        result = tell(name + ": the contrast of \"" + text + "\" isn't known");
    for (const auto& text : picture.texts)
    {
        const float contrast = text.contrast();
        if (contrast >= leastContrast)
            continue;
        const auto place = (text.area.getPosition() * (100.0f / static_cast<float>(scale))).toInt();
        result = tell(name + ": \"" + text.text + "\" at " + place.toString() + " has a contrast of " +
                      juce::String(contrast, 2) + ":1, and wants " + juce::String(leastContrast, 1) + ":1");
    }
    return result;
}

int work(const Options& options)
{
    const auto folder = fileOf(options.output);
    const auto prefix = fileOf(options.prefix);
    adoptUserPlaces(prefix);
    if (!folder.createDirectory())
        throw ToolFailure("cannot create " + folder.getFullPathName());

    ConsoleInteraction interaction(toolName);
    // Too large for the stack.
    const auto processor = std::make_unique<PluginProcessor>(makeUserStore(userPlaces(prefix)), interaction);
    EditorPictures editor(*processor);
    int result = exitFine;
    for (const auto& scene : allScenes(options.menus))
    {
        if (!isWanted(options, scene.name))
            continue;
        if (!editor.loadPreset(scene.folder, scene.preset))
            result =
                tell(scene.name + ": the preset " + scene.folder + "/" + scene.preset + " is not whole here");
        editor.play();
        if (!scene.arrange(editor))
            result = tell(scene.name + ": a control is missing");
        editor.settle();
        for (const int scale : options.scales)
        {
            const auto name = scene.name + "-" + juce::String(scale);
            const auto picture = editor.picture(static_cast<float>(scale) / 100.0f);
            writePng(picture.image, folder.getChildFile(name + ".png"));
            if (const int faint = checkTexts(name, scale, picture); faint != exitFine)
                result = faint;
        }
        if (!options.guide.empty())
            writeGuidePictures(scene.name, editor, fileOf(options.guide));
        EditorPictures::closeMenus();
    }
    return result;
}

} // namespace
} // namespace quorel

int main(int argc, char** argv)
{
    quorel::Options options;
    CLI::App app("Writes pictures of all pages of Quorel's editor.", quorel::toolName);
    app.add_option("--prefix", options.prefix, "A user that quorel-setup --prefix has set up")
        ->required()
        ->check(CLI::ExistingDirectory)
        ->type_name("DIR");
    app.add_option("-o,--output", options.output, "Folder for the pictures")
        ->type_name("DIR")
        ->capture_default_str();
    app.add_option("--guide", options.guide,
                   "Folder for the guide's pictures, which are written with it alone")
        ->check(CLI::ExistingDirectory)
        ->type_name("DIR");
    app.add_option("--scale", options.scales, "Percent; may be repeated")
        ->check(CLI::Range(50, 400))
        ->allow_extra_args(false)
        ->capture_default_str();
    app.add_flag("--menus", options.menus, "Pictures some menus, too; that wants a window manager");
    app.add_option("--only", options.only, "Only pictures with this in their names; may be repeated")
        ->allow_extra_args(false)
        ->type_name("NAME");
    return quorel::runTool(app, argc, argv, [&options] { return quorel::work(options); });
}
