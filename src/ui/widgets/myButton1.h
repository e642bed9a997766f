// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/widgets/TwoStateButton.h"

namespace quorel
{

/** A push button that reports both press and release: its listener hears two clicks, and tells them apart by
    the button's state. From the keyboard the release follows by itself. */
class myButton1 : public TwoStateButton
{
public:
    myButton1(juce::Rectangle<int> bounds, juce::Button::Listener* buttonListener,
              const CBitmap* twoStateImage);

    void mouseDown(const juce::MouseEvent& event) override;
    void mouseUp(const juce::MouseEvent& event) override;

protected:
    void buttonStateChanged() override;

private:
    void reportRelease();

    juce::Button::Listener* const listener;
    bool heldByMouse = false;
    bool wasDown = false;
};

} // namespace quorel
