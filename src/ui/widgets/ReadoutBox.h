// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/PluginProcessor.h"
#include "resources/CBitmap.h"
#include "ui/widgets/ControlPopup.h"
#include "ui/widgets/MidiGlow.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <optional>

namespace quorel
{

/** What the number boxes have in common: a number on an image, dragged up and down (with Shift ten times
    finer), stepped by wheel and arrow keys, typed after a double click or Return, and a menu on the right button. The
    slider runs from 0 to 1, which is spread over the numbers from `minimum` to `maximum`. Message thread. */
class ReadoutBox : public juce::Slider
{
public:
    /** `backgroundImage` outlives the box. */
    ReadoutBox(juce::Rectangle<int> bounds, juce::Slider::Listener* listener, const char* kind,
               int parameterId, const CBitmap* backgroundImage, float fontHeight, int labelWidthAdjust,
               PluginProcessor& pluginProcessor);

    /** Shows a value, limited to 0 to 1, without telling the listener. */
    void update(float value);

    /** The whole number shown for a value of 0 to 1. */
    int numberOf(float value) const noexcept;

    int minimum = 0;
    int maximum = 127;

    void paint(juce::Graphics& g) override;
    void valueChanged() override;
    void mouseDown(const juce::MouseEvent& event) override;
    void mouseDrag(const juce::MouseEvent& event) override;
    void mouseUp(const juce::MouseEvent& event) override;
    void mouseDoubleClick(const juce::MouseEvent& event) override;
    void mouseWheelMove(const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel) override;
    bool keyPressed(const juce::KeyPress& key) override;
    juce::String getTextFromValue(double value) override;
    double getValueFromText(const juce::String& text) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

protected:
    /** Text of what the slider stands at. */
    virtual juce::String textAt(double value) const = 0;

    /** The same as it is typed. */
    virtual juce::String typedTextAt(double value) const { return textAt(value); }

    /** What typed text means; nothing for what is no number. Any number may come: it is limited afterwards. */
    virtual std::optional<double> numberOfText(const juce::String& text) const;
    /** What the slider stands at for a number. */
    virtual double valueOf(double number) const;

    /** The number that the slider stands at. */
    virtual double numberAt(double value) const { return numberOf(static_cast<float>(value)); }

    virtual MenuEntries menuRows();
    virtual void runMenuRow(int id);

    /** Moves to a number, limited to the range, as one gesture. */
    void enter(double number);
    /** Goes up or down by so many numbers. */
    void step(int numbers);

    /** True while the user types. */
    bool isTyping() const { return label.isBeingEdited(); }

    /** Lets the user type. */
    void showField();
    /** Shows what the slider stands at. */
    void showText();

    double numberStep() const noexcept;

private:
    /** The text shown, which a field takes the place of while a number is typed. */
    class Text : public juce::Label
    {
    public:
        explicit Text(ReadoutBox& owner)
            : juce::Label({}, "midibox")
            , box(owner)
        {
        }

    private:
        juce::TextEditor* createEditorComponent() override;
        void editorShown(juce::TextEditor* field) override;
        void textWasEdited() override;

        ReadoutBox& box;
    };

    void typed(const juce::String& text);

    PluginProcessor& processor;
    const int parameter;
    const CBitmap* image;
    const int dragExtent;
    bool dragging = false;
    Text label{*this};
    MidiGlow glow{*this, parameter, processor};

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(ReadoutBox)
};

} // namespace quorel
