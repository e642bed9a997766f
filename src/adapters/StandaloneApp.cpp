// SPDX-License-Identifier: GPL-3.0-or-later
// The standalone program: its command line, and what it keeps from one start to the next.
#include "adapters/StandaloneWindow.h"
#include "engine/PluginProcessor.h"
#include "engine/PresetImport.h"
#include "platform/FileOperations.h"
#include "platform/PlatformSeam.h"
#include "platform/PlatformSeamProgram.h"
#include "platform/PlatformSeamSound.h"
#include "platform/PlatformSeamWindow.h"
#include "platform/Version.h"
#include "presets/PresetFiles.h"
#include "setup/FirstStart.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace quorel
{
namespace
{
enum ExitCode
{
    exitOk,
    exitFailed,
    exitUsage
};

/** "FOLDER/NAME", as the command line has it. */
struct PresetName
{
    explicit PresetName(const juce::String& text)
        : folder(text.upToLastOccurrenceOf("/", false, false))
        , name(text.fromLastOccurrenceOf("/", false, false))
    {
    }

    juce::String folder;
    juce::String name;
};

class StandaloneApp final : public juce::JUCEApplication, private juce::Timer
{
public:
    const juce::String getApplicationName() override { return "Quorel"; }

    const juce::String getApplicationVersion() override { return productVersion; }

    bool moreThanOneInstanceAllowed() override { return true; }

    void initialise(const juce::String&) override
    {
        printToCallersConsole();
        const int code = start();

        if (window == nullptr)
        {
            setApplicationReturnValue(code);
            quit();
        }
    }

    void shutdown() override
    {
        stopTimer();

        if (window != nullptr)
            window->keepSound();

        window = nullptr;

        if (settings != nullptr && !settings->saveIfNeeded())
            std::cerr << "quorel: " << settings->getFile().getFullPathName() << " can't be written"
                      << std::endl;
    }

    void systemRequestedQuit() override
    {
        // Questions that are open end first.
        if (juce::ModalComponentManager::getInstance()->cancelAllModalComponents())
            juce::MessageManager::callAsync([this] { systemRequestedQuit(); });
        else
            quit();
    }

private:
    /** An exit code that counts where no window has come of it. */
    int start()
    {
        CLI::App options{
            "Layers up to four instruments into one sound. The sound is kept for the next start.", "quorel"};
        std::string wanted;
        std::string file;
        options.set_version_flag("--version", std::string("quorel ") + productVersion,
                                 "Print the version and end");
        auto* preset =
            options.add_option("--preset", wanted, "Preset to open with")
                ->check([](const std::string& name) { return name.empty() ? "an empty name" : ""; })
                ->type_name("FOLDER/NAME");
        options
            .add_option("file", file,
                        "Preset to open with, as a file, or an archive of presets or a MIDI file. A preset "
                        "from elsewhere is copied into your own after a question")
            ->type_name("FILE")
            ->excludes(preset);

        try
        {
            std::vector<std::string> arguments;

            // CLI11 takes them from the end.
            for (const auto& argument : getCommandLineParameterArray())
                arguments.insert(arguments.begin(), argument.toStdString());

            options.parse(arguments);
            openWindow(juce::String::fromUTF8(wanted.c_str()), juce::String::fromUTF8(file.c_str()));
            return exitOk;
        }
        catch (const CLI::Success& answer)
        {
            const int code = options.exit(answer);

            if (std::cout.flush())
                return code;

            std::cerr << "quorel: cannot write the output" << std::endl;
            return exitFailed;
        }
        catch (const CLI::ParseError& error)
        {
            std::cerr << "quorel: " << error.what() << " (see --help)" << std::endl;
            return exitUsage;
        }
        catch (const std::runtime_error& error)
        {
            window = nullptr;
            std::cerr << "quorel: " << error.what() << std::endl;
            return exitFailed;
        }
    }

    void openWindow(const juce::String& wanted, const juce::String& path)
    {
        const auto file = path.isEmpty() ? juce::File() : wantedFile(path);
        // An instrument may still be opened when the user thinks better of it, and isn't to blame for that.
        removeFilesAtSignals();
        setUpAtFirstStart();
        const auto paths = readPaths(*makeUserStore());
        const auto folder = path.isEmpty() ? juce::String() : folderHolding(paths.banksFolder, file);
        const bool isOfTheBanks = folder.isNotEmpty() && file.hasFileExtension(presetFileEnding);
        const PresetName preset(isOfTheBanks ? folder + "/" + file.getFileNameWithoutExtension() : wanted);

        if (wanted.isNotEmpty() &&
            !findPresetFile(paths.banksFolder, preset.folder, preset.name).existsAsFile())
            throw std::runtime_error("there is no preset " + wanted.toStdString() + " (see --help)");

        if (juce::Desktop::getInstance().getDisplays().displays.isEmpty())
            throw std::runtime_error("there is no screen to open a window on");

        quietenSoundLibraries();
        settings = std::make_unique<juce::PropertiesFile>(settingsFile(), juce::PropertiesFile::Options());
        window = std::make_unique<StandaloneWindow>(*settings);

        if (preset.name.isNotEmpty())
            openPreset(preset);

        window->setVisible(true);
        catchTermination();
        startTimer(terminationPollMillis);

        if (path.isNotEmpty() && !isOfTheBanks)
            toTake = file;
    }

    static juce::File wantedFile(const juce::String& path)
    {
        const auto file = juce::File::getCurrentWorkingDirectory().getChildFile(path);

        if (!file.exists())
            throw std::runtime_error("there is no file " + path.toStdString() + " (see --help)");

        if (!file.existsAsFile() || !PresetImport::isWanted(path))
            throw std::runtime_error(path.toStdString() +
                                     " is no preset, no archive of presets and no MIDI file (see --help)");

        return file;
    }

    PluginProcessor& processor() { return dynamic_cast<PluginProcessor&>(window->getProcessor()); }

    /** As if it were dropped on the editor. What it asks holds the call, so that no timer may make it. */
    void takeFile(const juce::File& file)
    {
        juce::MessageManager::callAsync(
            [this, target = juce::Component::SafePointer<StandaloneWindow>(window.get()), file]
            {
                if (target != nullptr)
                    processor().getPresetCommands().importing().take({file.getFullPathName()});
            });
    }

    /** Nothing sounds yet, so there is nothing to fade out. */
    void openPreset(const PresetName& preset)
    {
        processor().setNames(preset.name, preset.folder);

        if (!processor().getSoundChange().loadPresetFile())
            throw std::runtime_error("preset " + (preset.folder + "/" + preset.name).toStdString() +
                                     " can't be loaded");

        processor().getEditorRequests().bringPageBack();
        processor().getPresetCommands().refreshLists();
        processor().requestEditorRefresh();
    }

    /** Beside the settings of the instruments. Earlier versions had theirs elsewhere. */
    static juce::File settingsFile()
    {
        const auto file = userPlaces().settingsFolder.getChildFile("Quorel.settings");
        const auto earlier = juce::File::getSpecialLocation(juce::File::userHomeDirectory)
                                 .getChildFile(".config/Quorel.settings");

        if (!file.existsAsFile() && earlier.existsAsFile())
        {
            juce::ignoreUnused(createFolder(file.getParentDirectory()));
            earlier.copyFileTo(file);
        }

        return file;
    }

    void timerCallback() override
    {
        if (isTerminationAsked())
            systemRequestedQuit();
        // The sound of last time may still be on its way, and its picture would wipe a question away.
        else if (toTake != juce::File() && !processor().getSoundChange().isUnderWay())
            takeFile(std::exchange(toTake, {}));
    }

    static constexpr int terminationPollMillis = 100;

    std::unique_ptr<juce::PropertiesFile> settings;
    std::unique_ptr<StandaloneWindow> window;
    /** A file of the command line that is neither a preset of the banks nor taken yet. */
    juce::File toTake;
};
} // namespace
} // namespace quorel

juce::JUCEApplicationBase* juce_CreateApplication();

juce::JUCEApplicationBase* juce_CreateApplication()
{
    return new quorel::StandaloneApp();
}
