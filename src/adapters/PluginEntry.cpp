// SPDX-License-Identifier: GPL-3.0-or-later
// What JUCE's plug-in clients call to get a processor.
#include "adapters/BoxInteraction.h"
#include "engine/PluginProcessor.h"
#include "platform/PlatformSeam.h"
#include "resources/CBitmap.h"
#include "ui/PluginEditor.h"

namespace
{
/** The processor with its way of talking to the user. */
class PluginInstance final : private quorel::BoxInteraction, public quorel::PluginProcessor
{
public:
    PluginInstance()
        : quorel::PluginProcessor(quorel::makeUserStore(), static_cast<quorel::BoxInteraction&>(*this))
    {
        editorFactory = [this](quorel::PluginProcessor& processor) -> juce::AudioProcessorEditor*
        {
            if (kept == nullptr)
                kept = std::make_unique<KeptForEditors>();

            return new quorel::PluginEditor(processor);
        };

        if (wrapperType == wrapperType_Standalone)
            openPresetOfCommandLine();
    }

private:
    /** The standalone opens with the preset that "--preset FOLDER/NAME" asks for, once it has restored what
        it played last. Nothing sounds yet, so there is nothing to fade out. */
    void openPresetOfCommandLine()
    {
        const auto arguments = juce::JUCEApplicationBase::getCommandLineParameterArray();
        const int option = arguments.indexOf("--preset");

        if (option < 0 || option + 1 >= arguments.size())
            return;

        juce::MessageManager::callAsync(
            [self = juce::WeakReference<quorel::PluginProcessor>(this),
             folder = arguments[option + 1].upToLastOccurrenceOf("/", false, false),
             preset = arguments[option + 1].fromLastOccurrenceOf("/", false, false)]
            {
                if (self == nullptr)
                    return;

                const auto presentPreset = self->getPresetName();
                const auto presentFolder = self->getFolderName();
                self->setNames(preset, folder);

                if (!self->getSoundChange().loadPresetFile())
                    self->setNames(presentPreset, presentFolder);

                self->getEditorRequests().bringPageBack();
                self->getPresetCommands().refreshLists();
                self->requestEditorRefresh();
            });
    }

    /** Images and look of the first editor, kept for the next ones. */
    struct KeptForEditors
    {
        juce::SharedResourcePointer<quorel::ImageStore> images;
        quorel::EditorLook look;
    };

    std::unique_ptr<KeptForEditors> kept;
};
} // namespace

juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter();

juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter()
{
    return new PluginInstance();
}
