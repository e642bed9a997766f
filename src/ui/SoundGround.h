// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace quorel
{

struct GroundCommands;

/** The free ground of a layer's strip or an effect block, behind its controls. Dragged onto another one of its kind
    it swaps the two, with Ctrl it copies; the right button, or Return, opens the menu of what can be done with the whole.
    Message thread. */
class SoundGround : public juce::Component, public juce::DragAndDropTarget
{
public:
    enum class Kind
    {
        layer,
        effect
    };

    /** `place` is 0 to 3. */
    SoundGround(Kind groundKind, int place, PluginProcessor& pluginProcessor);

    /** The part that is shown while it is dragged, and framed while something hovers over it. */
    void setFace(juce::Rectangle<int> newFace) { face = newFace; }

    void paint(juce::Graphics& g) override;
    void mouseDown(const juce::MouseEvent& event) override;
    void mouseDrag(const juce::MouseEvent& event) override;
    bool keyPressed(const juce::KeyPress& key) override;

    bool isInterestedInDragSource(const SourceDetails& source) override;
    void itemDragEnter(const SourceDetails& source) override;
    void itemDragExit(const SourceDetails& source) override;
    void itemDropped(const SourceDetails& source) override;

private:
    bool showMenu(bool atMouse);
    void runMenuRow(int id);
    void setHovered(bool isHovered);

    const Kind kind;
    const int index;
    const GroundCommands& commands;
    PluginProcessor& processor;
    juce::Rectangle<int> face;
    bool hovered = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(SoundGround)
};

/** A component that holds grounds and the controls in front of them: what is dropped on a control is meant for the
    ground behind it. Message thread. */
class GroundHolder : public juce::DragAndDropTarget
{
public:
    bool isInterestedInDragSource(const SourceDetails& source) override;
    void itemDragMove(const SourceDetails& source) override;
    void itemDragExit(const SourceDetails& source) override;
    void itemDropped(const SourceDetails& source) override;

private:
    /** Null where there is none. */
    virtual SoundGround* groundAt(juce::Point<int> position) = 0;
    /** The same, if it takes what is dragged. */
    SoundGround* targetOf(const SourceDetails& source);
    void hover(SoundGround* target, const SourceDetails& source);

    juce::Component::SafePointer<SoundGround> hovered;
};

} // namespace quorel
