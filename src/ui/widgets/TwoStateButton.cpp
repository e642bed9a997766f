// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/TwoStateButton.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{
namespace
{
constexpr int states = 2;
constexpr float activeOpacity = 0.9f;
} // namespace

TwoStateButton::TwoStateButton(juce::Rectangle<int> bounds, juce::Button::Listener* listener,
                               const char* kind, int parameterId, const CBitmap* twoStateImage)
    : juce::ImageButton(kind)
    , image(twoStateImage)
{
    setUpControl(*this, kind, parameterId);
    setTriggeredOnMouseDown(true);
    setBounds(boundsOnImage(bounds, image, states));
    if (listener != nullptr)
        addListener(listener);
}

void TwoStateButton::paintButton(juce::Graphics& g, bool highlighted, bool down)
{
    // The base class would draw an image of one resolution.
    const bool showDown = getToggleState() || (down && isEnabled());
    const int height = image->getHeight() / states;
    g.setOpacity(showDown || (highlighted && isEnabled()) ? activeOpacity : 1.0f);
    image->draw(g, getLocalBounds().toFloat(), {0, showDown ? height : 0, image->getWidth(), height});
}

} // namespace quorel
