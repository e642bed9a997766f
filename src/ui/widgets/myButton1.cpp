// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/myButton1.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{

myButton1::myButton1(juce::Rectangle<int> bounds, juce::Button::Listener* buttonListener,
                     const CBitmap* twoStateImage)
    : TwoStateButton(bounds, buttonListener, "button", noParameter, twoStateImage)
    , listener(buttonListener)
{
}

void myButton1::mouseDown(const juce::MouseEvent& event)
{
    heldByMouse = true;
    TwoStateButton::mouseDown(event);
}

void myButton1::mouseUp(const juce::MouseEvent& event)
{
    TwoStateButton::mouseUp(event);
    heldByMouse = false;
    reportRelease();
}

void myButton1::buttonStateChanged()
{
    const bool released = wasDown && !isDown();
    wasDown = isDown();
    if (released && !heldByMouse)
        reportRelease();
}

void myButton1::reportRelease()
{
    if (listener != nullptr)
        listener->buttonClicked(this);
}

} // namespace quorel
