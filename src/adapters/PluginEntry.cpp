// SPDX-License-Identifier: GPL-3.0-or-later
// What JUCE's plug-in clients call to get a processor.
#include "adapters/BoxInteraction.h"
#include "engine/PluginProcessor.h"
#include "platform/PlatformSeam.h"
#include "resources/CBitmap.h"
#include "setup/FirstStart.h"
#include "ui/PluginEditor.h"

namespace
{
/** The settings of a user who has been set up to play. */
std::unique_ptr<quorel::UserStore> settingsOfUser()
{
    quorel::setUpAtFirstStart();
    return quorel::makeUserStore();
}

/** The processor with its way of talking to the user. */
class PluginInstance final : private quorel::BoxInteraction, public quorel::PluginProcessor
{
public:
    PluginInstance()
        : quorel::PluginProcessor(settingsOfUser(), static_cast<quorel::BoxInteraction&>(*this))
    {
        editorFactory = [this](quorel::PluginProcessor& processor) -> juce::AudioProcessorEditor*
        {
            if (kept == nullptr)
                kept = std::make_unique<KeptForEditors>();

            return new quorel::PluginEditor(processor);
        };
        findEditor = [this]() -> juce::Component*
        {
            auto* editor = dynamic_cast<quorel::PluginEditor*>(getActiveEditor());
            return editor != nullptr && editor->isShowing() ? &editor->getView() : nullptr;
        };
    }

private:
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
