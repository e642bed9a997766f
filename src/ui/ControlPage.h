// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "ui/EditorImages.h"
#include "ui/EditorScale.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <initializer_list>

namespace quorel
{

/** The page that the view parameter asks for. */
Page viewPageOf(const PluginProcessor& processor);

/** What pages and strips ask of the editor around them. Message thread. */
class EditorHost
{
public:
    virtual ~EditorHost() = default;

    /** Rebuilds the whole picture for the processor's state. The caller's children may be gone and back
        afterwards. */
    virtual void fullRefresh() = 0;

    /** A page has changed its children by itself: the look-up of controls by parameter is made anew. */
    virtual void controlsChanged() = 0;

    /** The panel in front of everything. */
    virtual void showBackPanel() = 0;

    /** Size of the editor in percent of its layout, one of `editorScales`; a choice is kept for the user and
        takes effect at once. */
    virtual int getScalePercent() const = 0;
    virtual void setScalePercent(int percent) = 0;
};

/** A part of the editor with controls of its own, laid over it without taking clicks beside its controls. It
    hears its controls and writes what they say, by the parameter number in their component ID: a slider its
    value, a toggle its state. Message thread. */
class ControlPage : public juce::Component,
                    public juce::Slider::Listener,
                    public juce::Button::Listener,
                    public juce::ComboBox::Listener,
                    public juce::Label::Listener
{
public:
    ControlPage(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages);

    /** Sets every control from the processor and shows those that its state asks for. */
    virtual void refresh() = 0;

    void sliderValueChanged(juce::Slider* slider) override;
    /** A drag is one gesture to the host. */
    void sliderDragStarted(juce::Slider* slider) override;
    void sliderDragEnded(juce::Slider* slider) override;
    void buttonClicked(juce::Button* button) override;

    void comboBoxChanged(juce::ComboBox*) override {}

    void labelTextChanged(juce::Label*) override {}

    /** The parameter that a component stands for, from its ID; 0 for none. */
    static int parameterOf(const juce::Component& component);

    /** Lets a double click set a slider to its parameter's default. */
    static void returnToDefault(juce::Slider& slider);

protected:
    /** A position alone: a control made there takes its image's size. */
    static juce::Rectangle<int> at(juce::Point<int> position) { return {position.x, position.y, 0, 0}; }

    /** Prepares a button that draws nothing itself, over what the background shows there. */
    void setUpHotspot(juce::Button& button, juce::Rectangle<int> bounds, const juce::String& title);

    void addControls(std::initializer_list<juce::Component*> controls);

    /** Sets a control from its parameter, without telling its listeners. */
    void showToggle(juce::Button& toggle) const;
    void showSlider(juce::Slider& slider) const;

    PluginProcessor& processor;
    EditorHost& host;
    const EditorImages& images;
};

} // namespace quorel
