// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myKickTextButton.h"

#include "ui/widgets/BitmapText.h"
#include "ui/widgets/WidgetTools.h"

namespace quorel
{

myKickTextButton::myKickTextButton(juce::Rectangle<int> bounds, juce::Button::Listener* listener,
                                   const juce::String& shownText, const CBitmap* glyphStrip,
                                   juce::Colour textColour, juce::Colour backgroundColour)
    : juce::ImageButton("myKickTextButton")
    , strip(*glyphStrip)
    , ink(textColour)
    , fill(backgroundColour)
{
    setUpControl(*this, "myKickTextButton", noParameter);
    setButtonText(shownText);
    setTriggeredOnMouseDown(true);
    setBounds(bounds);
    if (listener != nullptr)
        addListener(listener);
}

void myKickTextButton::setColours(juce::Colour textColour, juce::Colour backgroundColour)
{
    if (ink == textColour && fill == backgroundColour)
        return;
    ink = textColour;
    fill = backgroundColour;
    repaint();
}

void myKickTextButton::paintButton(juce::Graphics& g, bool, bool)
{
    drawBitmapTextBox(g, strip, getButtonText(), getLocalBounds(), ink, fill);
}

} // namespace quorel
