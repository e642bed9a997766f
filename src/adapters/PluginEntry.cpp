// SPDX-License-Identifier: GPL-3.0-or-later
// What JUCE's plug-in clients call to get a processor.
#include "adapters/BoxInteraction.h"
#include "engine/PluginProcessor.h"
#include "presets/PlatformSeam.h"
#include "resources/CBitmap.h"
#include "ui/PluginEditor.h"

namespace
{
/** The processor together with its way of speaking to the user. */
class PluginInstance final : private quorel::BoxInteraction, public quorel::PluginProcessor
{
public:
    PluginInstance()
        : quorel::PluginProcessor(quorel::makeUserStore(), static_cast<quorel::BoxInteraction&>(*this))
    {
        editorFactory = [](quorel::PluginProcessor& processor) -> juce::AudioProcessorEditor*
        { return new quorel::PluginEditor(processor); };
    }

private:
    /** What one editor has decoded is there for the next. */
    juce::SharedResourcePointer<quorel::ImageStore> images;
};
} // namespace

juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter();

juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter()
{
    return new PluginInstance();
}
