// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/LayoutMenu.h"

#include "engine/PluginProcessor.h"
#include "hosting/InstrumentTable.h"
#include "presets/LineFiles.h"

namespace quorel
{

namespace
{
LineFiles layoutFiles(PluginProcessor& processor, int layer)
{
    const auto* row = findInstrument(processor.getLayer(layer).getPluginName());
    // An instrument outside the table has no layouts of its own.
    return {row != nullptr ? processor.getPaths().layoutsFolder : juce::File(),
            row != nullptr ? "." + juce::String(row->shortName) : juce::String(), "Layout"};
}

/** The layer that a menu command works on, across a question to the user: meanwhile the host may close the
    plug-in, or a preset may bring another instrument. */
class QuestionedLayer
{
public:
    QuestionedLayer(PluginProcessor& processor, int layerIndex)
        : alive(&processor)
        , layer(layerIndex)
        , pluginName(processor.getLayer(layer).getPluginName())
    {
    }

    /** The layer, or null if it isn't as it was. */
    VirtualInstrument* instrument() const
    {
        auto* found = alive != nullptr ? &alive->getLayer(layer) : nullptr;
        return found != nullptr && found->getPluginName() == pluginName ? found : nullptr;
    }

private:
    const juce::WeakReference<PluginProcessor> alive;
    const int layer;
    const juce::String pluginName;
};

bool saveLayout(PluginProcessor& processor, int layer, const LineFiles& files)
{
    const QuestionedLayer questioned(processor, layer);
    juce::StringArray lines;
    processor.getLayer(layer).saveEasyMapping(lines);

    if (lines.isEmpty())
        return true;

    const auto name = saveLinesAs(files, "Please select preset filename to save...", "Layout", lines,
                                  processor.userInteraction());
    auto* instrument = questioned.instrument();

    if (instrument != nullptr && name.isNotEmpty())
        instrument->layoutName = name;

    return instrument != nullptr;
}

bool deleteLayout(PluginProcessor& processor, int layer, const LineFiles& files)
{
    const QuestionedLayer questioned(processor, layer);
    const auto name = processor.getLayer(layer).layoutName;
    const bool deleted = deleteLineFile(files, name, processor.userInteraction());
    auto* instrument = questioned.instrument();

    if (instrument != nullptr && deleted)
    {
        const UndoHistory::Recording recording(processor);
        instrument->layoutName.clear();
        instrument->resetEasyMapping();
    }

    return instrument != nullptr;
}

void loadLayout(PluginProcessor& processor, int layer, const LineFiles& files, const juce::File& file)
{
    juce::StringArray lines;

    if (!readLinesOf(files, file, numEasyParameters, lines, processor.userInteraction()))
        return;

    const UndoHistory::Recording recording(processor);
    auto& instrument = processor.getLayer(layer);
    instrument.loadEasyMapping(lines);
    instrument.layoutName = file.getFileName();
}
} // namespace

MenuEntries layoutMenu(PluginProcessor& processor, int layer)
{
    if (!processor.getLayer(layer).hasInstance())
        return {};

    return lineFileMenu(layoutFiles(processor, layer), "Default Layout",
                        processor.getLayer(layer).layoutName);
}

void chooseLayout(PluginProcessor& processor, int layer, const MenuEntry& row)
{
    auto& instrument = processor.getLayer(layer);

    if (!instrument.hasInstance() || row.id < lineFileMenuId::reset)
        return;

    const auto files = layoutFiles(processor, layer);
    bool sameInstrument = true;

    switch (row.id)
    {
    case lineFileMenuId::reset:
    {
        const UndoHistory::Recording recording(processor);
        instrument.resetEasyMapping();
        instrument.layoutName.clear();
        break;
    }
    case lineFileMenuId::save:
        sameInstrument = saveLayout(processor, layer, files);
        break;
    case lineFileMenuId::remove:
        sameInstrument = deleteLayout(processor, layer, files);
        break;
    default:
        loadLayout(processor, layer, files, row.file);
        break;
    }

    if (!sameInstrument)
        return;

    // Tells the host that the layer has changed.
    const int drumPage = layerParameter(layer, layerSlot::drumPage);
    processor.setParameterFromUi(drumPage, processor.readParameter(drumPage));
    instrument.needsDisplayUpdate.store(true);
}

} // namespace quorel
