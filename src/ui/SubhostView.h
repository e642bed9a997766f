// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/ControlPage.h"
#include "ui/ControlSync.h"
#include "ui/EditorHeader.h"
#include "ui/EditorLook.h"
#include "ui/EditorTips.h"
#include "ui/FileDrop.h"
#include "ui/VirtualInstrumentUI.h"

#include <array>
#include <functional>
#include <memory>

namespace quorel
{

/** The contents of the editor, on a fixed layout of 1110 by 786: a header, the strips of the layers and one
    of four pages, or the back panel in front of them. It polls the processor every 50 ms and is never called
    by it. Message thread. */
class SubhostView : public juce::Component,
                    public juce::DragAndDropContainer,
                    public EditorHost,
                    public FileDrop,
                    private juce::Timer
{
public:
    /** `scale` is in percent; `scaleChosen` is called when the user chooses another. */
    SubhostView(PluginProcessor& pluginProcessor, int scale, std::function<void(int)> scaleChosen);
    ~SubhostView() override;

    void fullRefresh() override;
    void controlsChanged() override;
    void showBackPanel() override;

    int getScalePercent() const override { return scalePercent; }

    void setScalePercent(int percent) override;

    /** The editor has another size by now. */
    void noteScalePercent(int percent) noexcept { scalePercent = percent; }

    /** One pass of the timer. */
    void followProcessor();

    void paint(juce::Graphics& g) override;

    void paintOverChildren(juce::Graphics& g) override { paintDropFrame(g); }

    bool keyPressed(const juce::KeyPress& key) override;
    void mouseEnter(const juce::MouseEvent& event) override;
    void mouseExit(const juce::MouseEvent& event) override;
    void mouseDown(const juce::MouseEvent& event) override;
    void mouseDrag(const juce::MouseEvent& event) override;
    void mouseWheelMove(const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel) override;

private:
    void timerCallback() override { followProcessor(); }

    bool isLoading() const;
    void refreshPicture();
    /** Adds and removes children until these are left, from back to front. */
    void showChildren(const std::vector<juce::Component*>& wanted);
    ControlPage& pageFor(Page page);
    void showHint(const juce::MouseEvent& event);

    PluginProcessor& processor;
    EditorLook look;
    EditorImages images;
    EditorHeader header;
    std::array<std::unique_ptr<VirtualInstrumentUI>, numLayers> strips;
    /** Made when first shown. The Layers page consists of the strips alone. */
    std::array<std::unique_ptr<ControlPage>, numPages> pages;
    std::unique_ptr<ControlPage> backPanel;
    ControlSync controlSync;
    bool controlsMoved = true;
    bool onBackPanel = false;
    bool inPass = false;
    unsigned int passes = 0;
    Page viewPage = Page::layers;
    /** While the mouse is over the editor: they look after it all the time. */
    std::unique_ptr<EditorTips> tips;
    int scalePercent;
    std::function<void(int)> onScaleChosen;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(SubhostView)
};

} // namespace quorel
