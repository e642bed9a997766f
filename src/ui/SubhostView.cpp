// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/SubhostView.h"

#include "engine/PresetCommands.h"
#include "ui/BackScreenView.h"
#include "ui/FxPage.h"
#include "ui/Geometry.h"
#include "ui/HintText.h"
#include "ui/MultiControlPage.h"
#include "ui/PresetManagerPage.h"
#include "ui/widgets/MidiGlow.h"

#include <algorithm>

namespace quorel
{

namespace
{
constexpr int passMilliseconds = 50;
constexpr unsigned int passesPerStripPass = 2;
} // namespace

SubhostView::SubhostView(PluginProcessor& pluginProcessor, int scale, std::function<void(int)> scaleChosen)
    : FileDrop(*this, pluginProcessor)
    , processor(pluginProcessor)
    , header(pluginProcessor, *this, images)
    , controlSync(pluginProcessor)
    , scalePercent(scale)
    , onScaleChosen(std::move(scaleChosen))
{
    setLookAndFeel(&look.get());
    setOpaque(true);
    setSize(geometry::width, geometry::height);
    setTitle("Quorel");

    for (int layer = 0; layer < numLayers; ++layer)
    {
        auto& strip = strips[static_cast<size_t>(layer)];
        strip = std::make_unique<VirtualInstrumentUI>(processor, *this, images, layer);
        strip->setBounds(geometry::strip::bounds(layer));
        strip->setExplicitFocusOrder(layer + 2);
    }

    // Tab goes through the header, the strips, and what is right of them.
    header.setExplicitFocusOrder(1);

    addMouseListener(this, true);
    setWantsKeyboardFocus(true);
    processor.getPresetCommands().refreshLists();
    fullRefresh();
    startTimer(passMilliseconds);
    MidiGlow::alignClock();
}

SubhostView::~SubhostView()
{
    stopTimer();
    processor.getUndo().endAllDrags();
    removeMouseListener(this);
    setLookAndFeel(nullptr);
}

//==============================================================================================================
// The picture

ControlPage& SubhostView::pageFor(Page page)
{
    auto& made = pages[static_cast<size_t>(page)];

    if (made == nullptr)
    {
        if (page == Page::effects)
            made = std::make_unique<FxPage>(processor, *this, images);
        else if (page == Page::presetManager)
            made = std::make_unique<PresetManagerPage>(processor, *this, images);
        else
            made = std::make_unique<MultiControlPage>(processor, *this, images);

        made->setBounds(getLocalBounds());
    }

    return *made;
}

void SubhostView::fullRefresh()
{
    onBackPanel = false;
    refreshPicture();
}

void SubhostView::showBackPanel()
{
    onBackPanel = true;
    refreshPicture();
}

void SubhostView::refreshPicture()
{
    if (onBackPanel)
    {
        if (backPanel == nullptr)
        {
            backPanel = std::make_unique<BackScreenView>(processor, *this, images);
            backPanel->setBounds(getLocalBounds());
        }

        backPanel->refresh();
        showChildren({backPanel.get()});
        controlsChanged();
        repaint();
        return;
    }

    viewPage = viewPageOf(processor);
    std::vector<juce::Component*> wanted{&header};
    header.refresh();

    if (viewPage != Page::presetManager)
    {
        for (auto& strip : strips)
        {
            strip->refresh();
            wanted.push_back(strip.get());
        }
    }

    if (viewPage != Page::layers)
    {
        auto& page = pageFor(viewPage);
        page.refresh();
        wanted.push_back(&page);
    }

    showChildren(wanted);
    controlsChanged();
    repaint();
}

void SubhostView::showChildren(const std::vector<juce::Component*>& wanted)
{
    // Children that stay aren't touched: a drag or a text being typed survives a refresh.
    for (int i = getNumChildComponents(); --i >= 0;)
        if (auto* child = getChildComponent(i);
            child != tips.get() && std::find(wanted.begin(), wanted.end(), child) == wanted.end())
            removeChildComponent(child);

    for (auto* child : wanted)
        addAndMakeVisible(child);
}

void SubhostView::controlsChanged()
{
    controlsMoved = true;
}

void SubhostView::paint(juce::Graphics& g)
{
    const auto& background = onBackPanel ? images.back : images.pages[static_cast<size_t>(viewPage)];
    background.paint(g, getLocalBounds().toFloat());
}

void SubhostView::setScalePercent(int percent)
{
    if (percent == scalePercent)
        return;

    scalePercent = percent;
    writeEditorScale(processor.userStore(), percent);
    onScaleChosen(percent);
}

//==============================================================================================================
// The pass

bool SubhostView::isLoading() const
{
    return processor.getSoundChange().holdsDisplay();
}

void SubhostView::followProcessor()
{
    // One timer for all: each wakes the processor for itself.
    const bool stripPass = ++passes % passesPerStripPass == 0;
    for (auto& strip : strips)
    {
        strip->followShownPanel();
        if (stripPass)
            strip->follow();
    }

    if (tips != nullptr && !isMouseOver(true))
        tips = nullptr;

    if (isLoading())
    {
        header.showLoading(true);
        return;
    }

    header.showLoading(false);

    if (processor.getEditorRequests().takeRefresh())
    {
        refreshPicture();
        return;
    }

    if (inPass)
        return;

    const juce::ScopedValueSetter<bool> passGuard(inPass, true);

    if (controlsMoved)
    {
        controlsMoved = false;
        controlSync.rebuild(*this);
    }

    controlSync.run();

    if (!onBackPanel)
        header.update();
}

//==============================================================================================================
// Mouse and keys

void SubhostView::showHint(const juce::MouseEvent& event)
{
    if (isLoading())
        return;

    header.showHint(hintText(*event.eventComponent, processor));
}

void SubhostView::mouseEnter(const juce::MouseEvent& event)
{
    if (tips == nullptr)
        tips = std::make_unique<EditorTips>(*this);

    showHint(event);
}

void SubhostView::mouseDown(const juce::MouseEvent& event)
{
    showHint(event);
}

void SubhostView::mouseDrag(const juce::MouseEvent& event)
{
    showHint(event);
}

void SubhostView::mouseWheelMove(const juce::MouseEvent& event, const juce::MouseWheelDetails&)
{
    showHint(event);
}

void SubhostView::mouseExit(const juce::MouseEvent&)
{
    if (!isLoading())
        header.showHint({});
}

bool SubhostView::keyPressed(const juce::KeyPress& key)
{
    if (key.getModifiers().isCommandDown() && (key.getKeyCode() == 'Z' || key.getKeyCode() == 'z'))
    {
        auto& history = processor.getUndo();
        key.getModifiers().isShiftDown() ? history.redo() : history.undo();
        return true;
    }

    const bool up = key == juce::KeyPress::upKey;

    if (!up && key != juce::KeyPress::downKey)
        return false;

    if (processor.getPresetLibrary().getPresetCount() == 0)
        return false;

    processor.getPresetCommands().stepPreset(up ? -1 : 1);
    fullRefresh();
    return true;
}

} // namespace quorel
