// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/ReadoutBox.h"

namespace quorel
{

/** A number behind a few words, without a parameter. It takes and shows hundredths; a drag stops at whole
    numbers. */
class myIntBox : public ReadoutBox
{
public:
    myIntBox(juce::Rectangle<int> bounds, juce::Slider::Listener* listener, const CBitmap* backgroundImage,
             juce::String textBefore, PluginProcessor& pluginProcessor);

    /** Shows a number, limited to the range, without telling the listener. */
    void showNumber(double number);

    /** The number shown. */
    double getNumber() const { return numberAt(getValue()); }

    /** What the menu's "Set To Default" sets. */
    int defaultNumber = 0;

    double snapValue(double attempted, DragMode mode) override;

protected:
    juce::String textAt(double value) const override;
    juce::String typedTextAt(double value) const override;
    double valueOf(double number) const override;
    double numberAt(double value) const override;
    MenuEntries menuRows() override;
    void runMenuRow(int id) override;

private:
    const juce::String prefix;
};

} // namespace quorel
