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

/** What pages and strips need of the editor around them. Message thread. */
class EditorHost
{
public:
    virtual ~EditorHost() = default;

    /** Rebuilds the whole picture from the processor's state. May remove the caller's children and add them
        again. */
    virtual void fullRefresh() = 0;

    /** To be called by a page that has changed its children, so that controls are looked up again. */
    virtual void controlsChanged() = 0;

    /** Shows the back panel in front of everything. */
    virtual void showBackPanel() = 0;

    /** Scale of the editor in percent. Setting it takes effect at once and is stored for the user. */
    virtual int getScalePercent() const = 0;
    virtual void setScalePercent(int percent) = 0;
};

/** A part of the editor with controls of its own, laid over the editor; clicks beside its controls go through
    it. It listens to its controls and writes the parameter whose number is in their component ID: a slider's
    value, a toggle's state. Message thread. */
class ControlPage : public juce::Component,
                    public juce::Slider::Listener,
                    public juce::Button::Listener,
                    public juce::ComboBox::Listener,
                    public juce::Label::Listener
{
public:
    ControlPage(PluginProcessor& pluginProcessor, EditorHost& editorHost, const EditorImages& editorImages);

    /** Sets every control from the processor, and shows those that its state calls for. */
    virtual void refresh() = 0;

    /** Takes up what changes by itself, such as notes. The editor calls it while the page is shown. */
    virtual void follow() {}

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
    /** Bounds without a size: a control made there takes the size of its image. */
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
