// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/TwoStateButton.h"

#include "ui/widgets/WidgetTools.h"

namespace quorel
{
namespace
{
constexpr int states = 2;
constexpr float opacityOfDown = 0.9f;
/** Of white over a button under the mouse. */
constexpr float hoverLight = 0.12f;
/** Less is a shadow. */
constexpr juce::uint8 solidAlpha = 128;
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

juce::Rectangle<int> TwoStateButton::drawnFace() const
{
    const auto& picture = image->getImage();
    const int height = picture.getHeight() / states;
    juce::Rectangle<int> drawn;

    for (int y = 0; y < height; ++y)
        for (int x = 0; x < picture.getWidth(); ++x)
            if (picture.getPixelAt(x, y).getAlpha() >= solidAlpha)
                drawn = drawn.getUnion({x, y, 1, 1});

    return drawn;
}

bool TwoStateButton::hitTest(int x, int y)
{
    if (!face.has_value())
        face = drawnFace();

    return face->contains(x, y);
}

void TwoStateButton::paintButton(juce::Graphics& g, bool highlighted, bool down)
{
    // The base class would draw an image of one resolution.
    const bool showDown = getToggleState() || (down && isEnabled());
    const int height = image->getHeight() / states;
    const juce::Rectangle<int> source(0, showDown ? height : 0, image->getWidth(), height);
    g.setOpacity(showDown ? opacityOfDown : 1.0f);
    image->draw(g, getLocalBounds().toFloat(), source);

    if (highlighted && isEnabled())
    {
        g.setColour(juce::Colours::white.withAlpha(hoverLight));
        image->draw(g, getLocalBounds().toFloat(), source, true);
    }
}

} // namespace quorel
