// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/EcsMenu.h"

#include "engine/PluginProcessor.h"
#include "presets/LineFiles.h"

namespace quorel
{

namespace
{
LineFiles ecsFiles(PluginProcessor& processor)
{
    return {processor.getPaths().ecsFolder, ".ecs", "ECS"};
}

void clearEcs(PluginProcessor& processor)
{
    const UndoHistory::Recording recording(processor);
    processor.getControllerMap().clearControllerTable();
    processor.getSession().setEcsName({});
}

void saveEcs(PluginProcessor& processor)
{
    const juce::WeakReference<PluginProcessor> alive(&processor);
    const auto name = saveLinesAs(ecsFiles(processor), "Please select ECS filename to save...", "default",
                                  processor.getControllerMap().exportTable(), processor.userInteraction());

    // The host may have closed the plug-in behind the open question.
    if (alive != nullptr && name.isNotEmpty())
        processor.getSession().setEcsName(name);
}

void deleteEcs(PluginProcessor& processor)
{
    const juce::WeakReference<PluginProcessor> alive(&processor);
    const auto name = processor.getSession().getEcsName();

    if (deleteLineFile(ecsFiles(processor), name, processor.userInteraction()) && alive != nullptr)
        clearEcs(processor);
}

void loadEcs(PluginProcessor& processor, const juce::File& file)
{
    juce::StringArray lines;

    if (!readLinesOf(ecsFiles(processor), file, numControllers, lines, processor.userInteraction()))
        return;

    const UndoHistory::Recording recording(processor);
    processor.getControllerMap().importTable(lines);
    processor.getSession().setEcsName(file.getFileName());
}
} // namespace

MenuEntries ecsMenu(PluginProcessor& processor)
{
    return lineFileMenu(ecsFiles(processor), "Clear ECS", processor.getSession().getEcsName());
}

void chooseEcs(PluginProcessor& processor, const MenuEntry& row)
{
    switch (row.id)
    {
    case lineFileMenuId::reset:
        clearEcs(processor);
        break;
    case lineFileMenuId::save:
        saveEcs(processor);
        break;
    case lineFileMenuId::remove:
        deleteEcs(processor);
        break;
    default:
        if (row.id >= lineFileMenuId::firstFile)
            loadEcs(processor, row.file);
        break;
    }
}

} // namespace quorel
